// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsView.h"

#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace notch {
namespace {

constexpr int contentWidth = 600;
constexpr int shieldSide = 28;

QString words(const char* text)
{
    return QString::fromUtf8(text);
}

QLabel* label(const char* text, const QFont& font)
{
    auto* const label = new QLabel(words(text));
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

// What one reads once: smaller, and not in the first row.
QLabel* note(const char* text)
{
    auto* const quiet = label(text, style::font(11));
    quiet->setForegroundRole(QPalette::PlaceholderText);
    return quiet;
}

QLabel* shield(qreal ratio)
{
    QPixmap picture(QSize(shieldSide, shieldSide) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintSymbol(painter, QRectF(0, 0, shieldSide, shieldSide), Symbol::checkmarkShieldFill,
        style::accent.darker(140));
    auto* const label = new QLabel;
    label->setPixmap(picture);
    return label;
}

QGroupBox* section(const char* title, QLayout* content)
{
    auto* const box = new QGroupBox(words(title));
    box->setFont(style::font(13));
    content->setContentsMargins(14, 10, 14, 12);
    content->setSpacing(8);
    box->setLayout(content);
    return box;
}

std::string editionsText(const std::vector<std::string>& profiles)
{
    std::string text;
    for (const auto& profile : profiles)
        text += (text.empty() ? "" : "\n") + profile + " · Hook 已安装";
    return text.empty() ? "本应用 Hook：未安装" : text;
}

} // namespace

SettingsView::SettingsView(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , hoverToExpand_(buildSwitch(Preference::hoverToExpand, "悬停展开刘海"))
    , autoCollapse_(buildSwitch(Preference::autoCollapse, "鼠标离开后自动收起"))
    , bridge_(label("", style::font(12)))
    , editions_(label("", style::font(12)))
{
    setFont(style::font(13));
    bridge_->setObjectName(QStringLiteral("settings-bridge"));
    editions_->setObjectName(QStringLiteral("settings-editions"));
    setMinimumWidth(contentWidth);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(24, 22, 24, 18);
    column->setSpacing(16);
    column->addLayout(buildHeader());
    column->addWidget(buildInteraction());
    column->addWidget(buildConnection());
    column->addStretch(1);
    column->addLayout(buildFooter());
    refresh();
}

SettingsView::~SettingsView() = default;

QLayout* SettingsView::buildHeader()
{
    auto* const demo = new QPushButton(words("演示刘海"));
    demo->setObjectName(QStringLiteral("settings-demo"));
    connect(demo, &QPushButton::clicked, this, [this] { model_.showDemo(Demo::hook); });
    auto* const titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addWidget(label("把审批带到刘海", style::font(21, QFont::DemiBold)));
    titles->addWidget(label("本地处理 · 手动确认 · 不自动允许", style::font(12)));
    auto* const row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(shield(devicePixelRatioF()));
    row->addLayout(titles, 1);
    row->addWidget(demo);
    return row;
}

QCheckBox* SettingsView::buildSwitch(Preference preference, const char* text)
{
    auto* const box = new QCheckBox(words(text));
    box->setObjectName(toQString(name(preference)));
    // Only what a person switches is written: refresh() must not turn defaults into choices.
    connect(box, &QCheckBox::clicked, this,
        [this, preference](bool on) { model_.setPreference(preference, on); });
    return box;
}

QWidget* SettingsView::buildInteraction()
{
    auto* const column = new QVBoxLayout;
    column->addWidget(hoverToExpand_);
    column->addWidget(autoCollapse_);
    column->addWidget(note("仅影响刘海展示，不会更改 QuillMoss 配置或自动处理审批。"));
    return section("交互", column);
}

QWidget* SettingsView::buildConnection()
{
    auto* const command = label("QuillMossNotch --configure quillmoss --apply\n"
                                "QuillMossNotch --configure quillmossAI --apply",
        style::monospaced(12));
    command->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* const column = new QVBoxLayout;
    column->addWidget(bridge_);
    column->addWidget(editions_);
    column->addWidget(note("这里只检查配置是否安装，不代表 QuillMoss 已连接。"
                           "是否收到 Hook，请查看主面板的实际事件状态。"));
    column->addWidget(label("在终端中接入：", style::font(12)));
    column->addWidget(command);
    column->addWidget(
        note("仅处理 QuillMoss 发出的 PermissionRequest，在引擎真正请求权限时等待你手动"
             "允许或拒绝。不逐条拦截 Bash，不自动允许，也不改变全局权限模式。"));
    return section("接入（PermissionRequest Hook）", column);
}

QLayout* SettingsView::buildFooter()
{
    auto* const quit = new QPushButton(words("退出 QuillMoss Notch"));
    quit->setObjectName(QStringLiteral("settings-quit"));
    quit->setFont(style::font(13, QFont::DemiBold));
    quit->setAutoDefault(false);
    connect(quit, &QPushButton::clicked, this, [this] {
        if (model_.onQuitRequested)
            model_.onQuitRequested();
    });
    auto* const words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(label("退出不会关闭 QuillMoss", style::font(12)));
    words->addWidget(
        note("仅退出刘海助手，不移除 Hook，也不自动处理任何审批；有待审请求时会先确认"));
    auto* const row = new QHBoxLayout;
    row->setSpacing(14);
    row->addWidget(quit, 0, Qt::AlignTop);
    row->addLayout(words, 1);
    return row;
}

void SettingsView::refresh()
{
    const auto& switches = model_.state().switches;
    hoverToExpand_->setChecked(switches.isOn(Preference::hoverToExpand));
    autoCollapse_->setChecked(switches.isOn(Preference::autoCollapse));
    bridge_->setText(toQString(model_.state().message));
    editions_->setText(toQString(editionsText(model_.state().configuredProfiles)));
}

} // namespace notch
