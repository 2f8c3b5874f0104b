// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/HeaderContent.h"
#include "ShownScene.h"
#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QListWidget>
#include <QPaintEngine>
#include <QTextDocumentFragment>

#include <initializer_list>
#include <string>
#include <utility>

namespace notch {
namespace {

// Paints nothing, and remembers which symbol and which colours were painted.
class Painted final : public QPaintEngine, public QImage {
public:
    explicit Painted(QWidget& widget)
        : QPaintEngine(AllFeatures)
        , QImage(1, 1, Format_RGB32)
    {
        widget.render(this, {}, {}, QWidget::RenderFlags());
    }

    std::string marks;
    std::string symbol;

    QPaintEngine* paintEngine() const override { return const_cast<Painted*>(this); }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override { }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { }
    void drawTextItem(const QPointF&, const QTextItem&) override { add(state->pen().color()); }
    void drawPath(const QPainterPath& path) override
    {
        add(state->brush().color());
        for (const auto& [known, name] : symbolNames) {
            if (path == symbolPath(known))
                symbol += name;
        }
    }

private:
    void add(const QColor& colour)
    {
        for (const auto& [known, mark] : {std::pair(style::warning, '!'), {style::accent, '+'}}) {
            if (colour == known && marks.find(mark) == std::string::npos)
                marks += mark;
        }
    }
};

std::string textOf(const QWidget& widget)
{
    auto text = widget.property("text").toString() + widget.property("plainText").toString();
    if (const auto* const list = qobject_cast<const QListWidget*>(&widget)) {
        for (int row = 0; row < list->count(); ++row)
            text += list->item(row)->data(Qt::AccessibleTextRole).toString() + QLatin1String("; ");
    }
    return text.toStdString();
}

bool canBePressed(QAccessibleInterface& heard)
{
    return heard.role() == QAccessible::Button
        && heard.actionInterface()->actionNames().contains(
            QAccessibleActionInterface::pressAction());
}

std::string wordsOf(QWidget& widget)
{
    auto& heard = *QAccessible::queryAccessibleInterface(&widget);
    const Painted painted(widget);
    const auto text = textOf(widget);
    const auto name = heard.text(QAccessible::Name).toStdString();
    const auto tip = QTextDocumentFragment::fromHtml(widget.toolTip()).toPlainText().toStdString();
    auto words = painted.marks + painted.symbol;
    words += (painted.symbol.empty() || text.empty() ? "" : " ") + text;
    words += name.empty() || name == text ? "" : " / " + name;
    words += tip.empty() || tip == name ? "" : " [" + tip + ']';
    return canBePressed(heard) ? '(' + words + ')' : words;
}

// What a person sees and hears of the widget and of what is visible in it, each part as
//
//   !symbol text / name for a screen reader [tool tip]
//
// with ! for what is painted in the warning colour, + for the accent colour, no name or tool tip
// that only repeats, and a button that a screen reader can press in parentheses.
std::string shownWords(QWidget& widget)
{
    std::string line;
    auto parts = widget.findChildren<QWidget*>();
    parts.push_front(&widget);
    for (auto* const part : parts) {
        const auto words = part->isVisible() ? wordsOf(*part) : std::string();
        if (!words.empty())
            line += (line.empty() ? "" : " | ") + words;
    }
    return line;
}

// A state in the words of a scene, and what it shows in those of shownWords().
struct Row {
    const char* scene;
    std::string shown;
};

// In the named widgets; "name/.." is the section around one.
void expectShown(const char* paths, std::initializer_list<Row> rows)
{
    for (const auto& row : rows) {
        ShownScene scene;
        scene.play(row.scene);
        scene.layOut();
        std::string shown;
        for (const auto& path : QString::fromLatin1(paths).split(QLatin1Char(' '))) {
            auto& named = scene.find(path.section(QLatin1Char('/'), 0, 0).toLatin1());
            auto& widget = path.endsWith(QLatin1String("/..")) ? *named.parentWidget() : named;
            shown += (shown.empty() ? "" : " | ") + shownWords(widget);
        }
        EXPECT_EQ(shown, row.shown) << row.scene;
    }
}

TEST(NotchStates, stripSaysWhatWaitsAndWhatAClickDoes)
{
    const std::string opens = " [点击展开 · 收起不会允许或拒绝任何请求])";
    const std::string closes = " / 收起 QuillMoss 刘海 [点击收起 · 不改变任何审批决定])";
    const std::string question = "(!questionmark.bubble QuillMoss · 待回答 / ";
    const std::string reminds = " [仅提醒 · 收起不会代答或跳过问题])";
    expectShown("compact",
        {
            {"", "(+chevron.down QuillMoss / 展开 QuillMoss 刘海" + opens},
            {"open", "(+chevron.up QuillMoss" + closes},
            {"ask A, close", "(!hand.tap 1 条待确认 / 1 条待确认请求" + opens},
            {"question, ask A, edit B", "(!hand.tap 2 条待确认" + closes},
            {"ask A, edit B, wait 0.5, deny A, close",
                "(!hand.tap 1 条待确认 / 1 条待确认请求" + opens},
            {"question, open", question + "收起 QuillMoss 刘海" + reminds},
            {"on completionRemindersEnabled, turn, question, open, close",
                question + "展开 QuillMoss 待回答提醒" + reminds},
            {"on completionRemindersEnabled, turn, open, close",
                "(!bell.badge QuillMoss · 本轮结束 / 展开 QuillMoss 刘海" + opens},
            {"turn, open, close", "(+chevron.down QuillMoss / 展开 QuillMoss 刘海" + opens},
        });
}

TEST(NotchStates, headerNamesTheFirstThatHolds)
{
    const std::string settings = " | (slider.horizontal.3 / 接入与交互设置) | ";
    const std::string close =
        "(xmark / 暂时收起，不改变审批决定 [暂时收起（Esc），不改变审批决定])";
    expectShown("header-text/..",
        {
            {"question, demo hook",
                "交互演示 · 不执行命令 | (slider.horizontal.3 / 结束演示) | " + close},
            {"question, ask A, edit B, wait 0.5, deny A", "本次处理结果" + settings + close},
            {"question, ask A", "有操作需要你确认" + settings + close},
            {"on completionRemindersEnabled, turn, question, open",
                "有问题等你回答 · 仅提醒" + settings
                    + "(xmark / 暂时收起，不回答或跳过问题 [暂时收起（Esc），不回答或跳过问题])"},
            {"on completionRemindersEnabled, turn, open",
                "本轮已结束 · 请核对结果" + settings + close},
            {"turn, open", "刘海提醒 · 随时待命" + settings + close},
        });
}

TEST(NotchStates, questionIsShownWithTheWayToTheHost)
{
    const std::string title = "QuillMoss 等你回答 | 发布说明写给谁看？ | 第 ";
    const std::string next = "QuillMoss 等你回答 | Q? | 第 ";
    const std::string rest =
        " / 2 页 | 仅提醒，请回 QuillMoss 选择或填写。\n这里不会代选、填写、跳过或提交。";
    const std::string button = "arrow.up.forward 去回答 [仅切回 QuillMoss，不回答、翻页或提交]";
    expectShown("question-reminder",
        {
            {"question", title + "1" + rest + " | " + button},
            {"question, wait 0.46", title + "1" + rest + " | (+" + button + ')'},
            {"question, wait 1, page2 Q, page2 Q, open", next + "2" + rest + " | " + button},
            {"deaf, question, wait 0.46, goAnswer",
                title + "1" + rest + " | !无法切换，请手动返回 QuillMoss | " + button},
            {"question, ask A", ""},
        });
}

TEST(NotchStates, turnEndIsShownWithTheWayToTheHost)
{
    const std::string title =
        "QuillMoss 本轮已结束 | 请返回原应用查看结果。\n生成、上传等后台任务的状态，以原应用为准。";
    const std::string dismiss = " | (知道了)";
    const std::string open =
        "arrow.up.forward 打开 QuillMoss [仅切回原应用，不选择会话，不操作任务或审批]";
    const std::string bell = " | +bell.badge.fill";
    expectShown("completion-reminder",
        {
            {"on completionRemindersEnabled, turn", title + dismiss + " | " + open + bell},
            {"on completionRemindersEnabled, turn, wait 0.46",
                title + dismiss + " | (+" + open + ')' + bell},
            {"on completionRemindersEnabled, deaf, turn, wait 0.46, openTurn",
                title + " | !无法切换，请手动打开 QuillMoss" + dismiss + " | " + open + bell},
            {"on completionRemindersEnabled, turn, question", ""},
        });
}

TEST(NotchStates, headerHasASymbolWhereThereIsNoPicture)
{
    Scene scene;
    EXPECT_EQ(HeaderContent(scene.model.state()).avatar, Symbol::checkmarkShieldFill);
    scene.play("question, open");
    EXPECT_EQ(HeaderContent(scene.model.state()).avatar, Symbol::questionmarkBubbleFill);
}

TEST(NotchStates, requestIsShownWithWhereItComesFrom)
{
    const std::string directory = "目录：/home/lin/Projects/moss-garden]";
    const std::string description = "原请求说明：清理旧的构建目录，再完整构建一次 / 原请求说明";
    const std::string command =
        " | rm -rf build && cmake --preset release\ncmake --build --preset release / 请求内容";
    const std::string bar =
        " | (chevron.down 查看完整参数) | (doc.on.doc 复制 [复制当前展示的完整内容])";
    const std::string time = " | clock 50 秒 | 时间用尽交回 QuillMoss 原流程，不自动允许";
    const std::string footer = " | lock 只允许这一项 | (去 QuillMoss 处理 ↗)";
    const std::string folder = " | 超时交回原窗口 | folder /home/lin/Projects/moss-garden | ";
    const std::string unarmed = " | xmark 拒绝 | checkmark 允许本次";
    expectShown("approval",
        {
            {"ask A, wait 0.5", "执行终端命令" + folder
                                    + "QuillMoss · 7c1f0a52-93b "
                                      "[会话：7c1f0a52-93be-4d0e-8a77-2f5d1c0b9e64\n"
                                    + directory + " | " + description + command + bar + time
                                    + " | (xmark 拒绝) | (+checkmark 允许本次)" + footer},
            {"card A, wait 0.5",
                "!exclamationmark.shield 原生安全确认 · 只点击当前这张卡，不更改权限策略"
                " | 确认批量删除 | 点击前重新核验 | macwindow 来自 QuillMoss 原窗口"
                " | 原窗口：窗口 | !"
                    + description + command + bar
                    + " | (xmark 取消删除) | (+checkmark 允许本次删除)" + footer},
            {"ask A, edit B, switch 1",
                "修改文件" + folder
                    + "QuillMoss · 会话一二三四五六七八九十 [会话：会话一二三四五六七八九十百千 "
                    + directory + " | {\"file\":\"a\"} / 请求内容" + bar + time + unarmed + footer
                    + " | square.stack 待确认 2 / 2 | 执行终端命令 · moss-garden; "
                      "修改文件 · moss-garden;  / 选择请求 [切换待确认请求，不批量允许]"
                      " | (chevron.left / 上一条请求 [切换待确认请求，不批量允许])"
                      " | (chevron.right / 下一条请求 [切换待确认请求，不批量允许])"},
            {"empty A", "使用 Bash | 超时交回原窗口 | folder 未提供目录"
                        " | QuillMoss AI · 未提供会话 [会话： 目录： ] | {} / 请求内容"
                            + bar + time + unarmed + footer},
        });
}

TEST(NotchStates, failuresAreToldBelowWhateverIsShown)
{
    const std::string missing =
        "!exclamationmark.shield 未在 Applications 找到 QuillMoss，请手动打开";
    expectShown("failure", {
                               {"open", ""},
                               {"noHost, host demo", missing},
                               {"noHost, ask A, host demo", missing},
                               {"noHost, ask A, host demo, wait 0.5, allow A", ""},
                           });
}

TEST(NotchStates, timeTurnsOrangeAtTenSeconds)
{
    expectShown("time-left", {
                                 {"ask A, wait 39.5", "clock 11 秒"},
                                 {"ask A, wait 40", "!clock 10 秒"},
                                 {"ask A, wait 49.75", "!clock 1 秒"},
                                 {"ask A, wait 53", "!clock 0 秒"},
                             });
    expectShown("time-note", {{"ask A, wait 40", "!时间用尽交回 QuillMoss 原流程，不自动允许"}});
}

TEST(NotchStates, detailsAreHeadedByTheTool)
{
    const std::string closes = " / 完整参数 | (chevron.up 返回命令视图) | ";
    const std::string copy = "(doc.on.doc 复制 [复制当前展示的完整内容])";
    const std::string copied = "(checkmark 已复制 [复制当前展示的完整内容])";
    const std::string input =
        R"({"command":"rm -rf build && cmake --preset release\ncmake --build --preset release",)"
        R"("description":"清理旧的构建目录，再完整构建一次","timeout":120000})";
    expectShown("details-header details-chip approval-command approval-parameters details-toggle "
                "details-copy",
        {
            {"ask A, details", "完整命令 | !含附加参数 |  | " + input + closes + copy},
            {"card A, details", "完整命令 | !含附加参数 |  | " + input + closes + copy},
            {"edit A, details, copy", "工具参数 |  |  | {\"file\":\"a\"}" + closes + copied},
            {"empty A, details", "完整请求信息 |  |  | {}" + closes + copy},
            {"ask A, empty B, copy, switch 1, details", "完整请求信息 |  |  | {}" + closes + copy},
        });
}

TEST(NotchStates, receiptTellsWhatWasDoneAndWhatWasNot)
{
    const std::string hook = " | 仅作用于刚才的请求，不影响后续权限";
    const std::string card = " | 仅操作原按钮，请以 QuillMoss 实际结果为准";
    const std::string demo = " | 没有执行命令，也没有修改权限";
    const std::string check = " | 请在原应用检查状态，不会自动重试";
    const std::string allowed = "+checkmark.circle.fill | ";
    const std::string denied = "!xmark.circle.fill | ";
    const std::string returned = "+arrow.up.forward.circle.fill | ";
    expectShown("receipt-title/..",
        {
            {"ask A, wait 0.5, allow A", allowed + "已发送本次允许" + hook},
            {"ask A, edit B, edit C, wait 0.5, deny A",
                denied + "已发送拒绝" + hook + " | (继续查看 2 条待确认 →)"},
            {"ask A, wait 0.5, handBack A", returned + "已交回 QuillMoss" + hook},
            {"ask A, wait 50, gone A", "!clock.arrow.circlepath | 等待已超时" + check},
            {"ask A, gone A", "minus.circle.fill | 请在原窗口核对" + check},
            {"card A, wait 0.5, allow A", allowed + "已点击原生允许" + card},
            {"card A, wait 0.5, deny A", denied + "已点击原生取消" + card},
            {"card A, wait 0.5, handBack A", returned + "已交回 QuillMoss" + card},
            {"card A, wait 0.5, refuse, deny A", "minus.circle.fill | 请在原窗口核对" + check},
            {"demo hook, wait 0.5, allow demo", allowed + "已体验允许本次" + demo},
            {"demo native, wait 0.5, deny demo", denied + "已体骁拒绝" + demo},
            {"demo hook, wait 0.5, handBack demo", returned + "演示已结束" + demo},
        });
}

TEST(NotchStates, idleNotchTellsHowThingsStandAndTheNextStep)
{
    const std::string quiet = "已就绪，等待新事件 | 收到支持的事件时提醒，平时保持安静。"
                              " | QuillMoss · Hook 已安装，等待请求";
    const std::string native = " | 原生检测（删除/提问）· 原生安全确认尚未开启";
    const std::string demo = " | (体验一下 →)";
    const std::string connect =
        " | 安装审批 Hook 后重启 QuillMoss，\n支持的工具请求就会出现在这里。" + native
        + " | (+接入 QuillMoss)" + demo;
    const std::string open = " | (+打开 QuillMoss ↗)" + demo;
    expectShown("idle-title/..",
        {
            {"unreachable, editions 0, open", "桥接暂不可用" + connect},
            {"editions 0, open", "还差一步，接入 QuillMoss" + connect},
            {"open", quiet + native + open},
            {"off questionRemindersEnabled, open", quiet + open},
            {"on nativeApprovalsEnabled, off questionRemindersEnabled, open",
                quiet + native + " | (+开启辅助功能)" + demo},
            {"trusted, on nativeApprovalsEnabled, open", quiet + native + open},
            {"on completionRemindersEnabled, open",
                quiet + " | 结束提醒 · 已接入，等待新一轮开始与结束事件" + native + open},
            {"editions 2, ask A, gone A, wait 5, open",
                "已就绪，等待新事件 | 收到支持的事件时提醒，平时保持安静。 | "
                "QuillMoss、QuillMoss AI · Hook 已安装，本次运行已收到请求"
                    + native + open},
        });
}

} // namespace
} // namespace notch
