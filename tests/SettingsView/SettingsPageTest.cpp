// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsPage.h"
#include "SettingsView/SettingsHome.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>
#include <QtTest>

#include <optional>

namespace notch {
namespace {

class SettingsPageTest : public testing::Test, protected SettingsHome {
protected:
    SettingsPageTest()
    {
        model.subscribe([this] { page.refresh(); });
        page.resize(600, 680);
        page.show();
        QApplication::setActiveWindow(&page);
        EXPECT_TRUE(QTest::qWaitFor([&] { return status() != checking; }));
    }

    QString status() { return find<QLabel>("settings-status").text(); }
    template <class Widget = QAbstractButton> Widget& find(const char* name)
    {
        return *page.findChild<Widget*>(QLatin1String(name));
    }
    QDialog* dialog() { return page.findChild<QDialog*>(); }
    // On what has the keyboard; the named widget, if there is one.
    void answerWith(Qt::Key key, const char* name = nullptr)
    {
        find("settings-install").click();
        if (name)
            find<QWidget>(name).setFocus();
        QTest::keyClick(dialog()->focusWidget(), key);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Its middle lies within what can be seen of the scrolling content.
    bool isInSight(QWidget& widget)
    {
        auto* const port = page.findChild<QScrollArea*>()->viewport();
        return port->rect().contains(widget.mapTo(port, widget.rect().center()));
    }

    const QString checking = QStringLiteral("正在检查配置");
    SettingsPage page{model, surroundings()};
};

std::string heard(QWidget* widget)
{
    auto& told = *QAccessible::queryAccessibleInterface(widget);
    const auto state = told.state();
    const auto labels = told.relations(QAccessible::Label);
    const auto label = labels.isEmpty() ? QString() : labels[0].first->text(QAccessible::Name);
    return qAccessibleRoleString(told.role()) + std::string(" ")
         + told.text(QAccessible::Name).toStdString()
         + (label.isEmpty() ? "" : " of " + label.toStdString()) + (state.checked ? " checked" : "")
         + (state.disabled ? " disabled" : "");
}

TEST_F(SettingsPageTest, theKeyboardReachesEachControlAndAScreenReaderNamesIt)
{
    std::string controls;
    auto* const first = &find<QWidget>("settings-demo");
    first->setFocus();
    do {
        auto* const widget = QApplication::focusWidget();
        controls += heard(widget) + '\n';
        EXPECT_TRUE(widget == &find<QWidget>("settings-quit") || isInSight(*widget)) << controls;
        QTest::keyClick(widget, Qt::Key_Tab);
    } while (QApplication::focusWidget() != first);
    EXPECT_EQ(controls, R"(Button 演示刘海
CheckBox 悬停展开刘海 checked
CheckBox 鼠标离开后自动收起 checked
CheckBox 在刘海显示真实的批量删除确认卡
CheckBox 后台等待回答时，在刘海提醒 checked
Button 授权辅助功能…
Button 刷新检测
CheckBox 后台本轮结束时，在刘海提醒
Button 更新结束提醒接入…
Button 移除结束提醒接入…
ComboBox QuillMoss of 接入版本
EditableText settings.json
StaticText 尚无 settings.json；确认安装后才会创建。
Button 刷新状态
Button 安装接入…
Button 移除接入…
Button 打开 QuillMoss
Button 退出 QuillMoss Notch
)");
}

TEST_F(SettingsPageTest, aSwitchIsTheModelsWhoeverFlipsIt)
{
    for (const auto preference : allPreferences) {
        auto& box = find(std::string(name(preference)).c_str());
        const bool before = box.isChecked();
        box.click();
        EXPECT_EQ(model.state().switches.isOn(preference), !before) << name(preference);
        model.setPreference(preference, before);
        EXPECT_EQ(box.isChecked(), before) << name(preference);
    }
}

TEST_F(SettingsPageTest, aKeyMeantForTheWindowConfirmsNothing)
{
    write("{}");
    for (const auto& [key, widget] : std::vector<std::pair<Qt::Key, const char*>>{
             {Qt::Key_Return, nullptr},
             {Qt::Key_Enter, nullptr},
             {Qt::Key_Space, nullptr},
             {Qt::Key_Escape, nullptr},
             {Qt::Key_Return, "settings-preview"},
             {Qt::Key_Escape, "settings-preview"},
         }) {
        answerWith(key, widget);
        EXPECT_EQ(text(), "{}");
        EXPECT_FALSE(dialog()) << key;
        EXPECT_TRUE(find<QLabel>("settings-result").text().isEmpty());
    }
    answerWith(Qt::Key_Return, "settings-confirm-yes");
    EXPECT_NE(text(), "{}") << "it was meant for the button";
    QTest::keyClick(&page, Qt::Key_Escape);
    EXPECT_FALSE(page.isVisible());
}

TEST_F(SettingsPageTest, aNewResultComesIntoSightAndGoesWithItsEdition)
{
    find("settings-remove").click();
    find("settings-confirm-yes").click();
    QApplication::processEvents();
    auto& row = find<QWidget>("settings-result-row");
    EXPECT_TRUE(isInSight(row));
    EXPECT_EQ(heard(&row), "Notification 移除失败：配置文件不存在；没有可卸载的 hook。");
    find<QComboBox>("settings-edition").setFocus();
    QTest::keyClick(&find<QComboBox>("settings-edition"), Qt::Key_Down);
    EXPECT_FALSE(row.isVisible()) << "another edition was chosen";
}

TEST_F(SettingsPageTest, aResultThatCameWhileTheWindowWasClosedIsInSightWhenItOpens)
{
    write("{}");
    find("settings-turn-end-install").click();
    find("settings-confirm-yes").click();
    page.close();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        fakes.time.runPosted();
        return !find<QLabel>("settings-result").text().isEmpty();
    }));
    page.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isInSight(find<QWidget>("settings-result-row")); }));
}

TEST_F(SettingsPageTest, theFileIsReadAgainWhenTheWindowIsShown)
{
    page.close();
    write("{");
    page.show();
    EXPECT_EQ(status(), QStringLiteral("配置错误 / 无法读取"));
    EXPECT_FALSE(find("settings-install").isEnabled());
}

TEST_F(SettingsPageTest, theWindowIsThereBeforeTheFileIsReadFirst)
{
    SettingsPage fresh(model, surroundings());
    std::optional<bool> wasThere;
    files.beforeOpen = [&] { wasThere = wasThere.value_or(fresh.windowHandle()->isExposed()); };
    fresh.show();
    EXPECT_EQ(fresh.findChild<QLabel*>(QStringLiteral("settings-status"))->text(), checking);
    EXPECT_TRUE(QTest::qWaitFor([&] { return wasThere.has_value(); }));
    EXPECT_EQ(wasThere, true);
}

TEST_F(SettingsPageTest, theDesktopsThemeMayChangeMeanwhile)
{
    const auto light = QApplication::palette();
    const auto& note = find<QLabel>("settings-detail");
    const auto lightness = [&] { return note.palette().color(note.foregroundRole()).lightness(); };
    const int onLight = lightness();
    QApplication::setPalette(QPalette(QColor(0x2D, 0x2D, 0x30)));
    QApplication::processEvents();
    EXPECT_GT(lightness(), onLight + 80);
    QApplication::setPalette(light);
    QApplication::processEvents();
    EXPECT_EQ(lightness(), onLight);
}

// On a screen of 1024 by 600, with texts of the usual size and half as large again.
TEST(LowScreenTest, nothingIsCutOffAndTheFooterStays)
{
    const auto usual = QApplication::font();
    for (const int textSize : {13, 20}) {
        SCOPED_TRACE(textSize);
        auto font = usual;
        font.setPixelSize(textSize);
        QApplication::setFont(font);
        SettingsHome home;
        SettingsPage page(home.model, home.surroundings());
        page.resize(600, 600 - 80);
        page.show();
        QApplication::processEvents();
        EXPECT_EQ(page.findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(page.width(), 600);
        for (auto* const button : page.findChildren<QAbstractButton*>())
            EXPECT_GE(button->width(), button->sizeHint().width()) << heard(button);
        auto& quit = *page.findChild<QAbstractButton*>(QStringLiteral("settings-quit"));
        EXPECT_TRUE(page.rect().contains(QRect(quit.mapTo(&page, QPoint()), quit.size())));
    }
    QApplication::setFont(usual);
}

} // namespace
} // namespace notch
