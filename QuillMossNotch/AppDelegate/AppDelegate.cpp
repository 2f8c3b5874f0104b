// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/AppDelegate.h"

#include "Style/ResourceIcon.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSessionManager>

namespace notch {

using namespace Qt::StringLiterals;

namespace {

const QString description = u"QuillMoss 刘海审批"_s;

InputRules::Event systemWideEvent(PointerMonitor::Event event)
{
    const bool press =
        event == PointerMonitor::Event::leftDown || event == PointerMonitor::Event::rightDown;
    return press ? InputRules::Event::pressElsewhere : InputRules::Event::other;
}

} // namespace

struct AppDelegate::MenuEntry {
    QStringView title; // Empty: a separator.
    void (AppDelegate::*chosen)();
};

const AppDelegate::MenuEntry AppDelegate::menu[] = {
    {u"展开刘海", &AppDelegate::expand},
    {u"接入设置…", &AppDelegate::openSettings},
    {u"演示普通审批（不执行命令）", &AppDelegate::demo},
    {u"演示原生删除确认（不执行删除）", &AppDelegate::demoNative},
    {},
    {u"打开 QuillMoss", &AppDelegate::openQuillMoss},
    {},
    {u"退出 QuillMoss Notch", &AppDelegate::quit},
};

AppDelegate::AppDelegate(const AppModel::Dependencies& dependencies,
    const HookFlow::Surroundings& hookFiles, LaunchOptions options)
    : dependencies_(dependencies)
    , options_(options)
    , model_(dependencies)
    , quitFlow_(model_, *this)
    , settingsWindow_(model_, hookFiles)
{
}

AppDelegate::~AppDelegate() = default;

// The order is a promise. What can receive a request starts last, when the notch can show it, every
// way to answer or leave it is watched, and the switches say what the person asked for; and the
// panel is shown only once it has its place.
void AppDelegate::launch()
{
    buildStatusItem();
    buildNotch();
    connectModel();
    startMonitors();
    watchForTermination();
    options_.storeIn(dependencies_.preferences);
    startModel();
    showNotch();
}

// In the model's own order: turn ends, then the approval server, so that no hook is answered by the
// end of this process, then the native monitor.
void AppDelegate::willTerminate()
{
    model_.stop();
    if (notch_)
        notch_->stop();
    signals_.reset();
    pointerMonitor_.reset();
    QCoreApplication::instance()->removeEventFilter(this);
    model_.subscribe({}); // There is nothing to lay out any more.
}

void AppDelegate::buildStatusItem()
{
    statusItem_.emplace(resourceIcon(u"MenuBarTemplate"_s), description);
    for (const auto& [title, chosen] : menu) {
        if (chosen)
            statusItem_->add(title.toString(), [this, chosen = chosen] { (this->*chosen)(); });
        else
            statusItem_->addSeparator();
    }
    statusItem_->show();
}

void AppDelegate::buildNotch()
{
    model_.setExpansionPresentation(model_.state().interaction.expanded());
    notch_.emplace(model_, dependencies_,
        NotchStage::Requests{
            .scheduleLayout = [this] { scheduleLayout(); },
            .layOut = [this] { layOut(); },
        });
}

void AppDelegate::connectModel()
{
    model_.showSettings = [this] { openSettings(); };
    model_.onQuitRequested = [this] { quit(); };
    model_.subscribe([this] { scheduleLayout(); });
}

void AppDelegate::startMonitors()
{
    rules_.emplace(model_, notch_->panel(), [this] { notch_->refreshHit(); });
    QCoreApplication::instance()->installEventFilter(this);
    pointerMonitor_.emplace(PointerMonitor::Handlers{
        .elsewhere =
            [this](PointerMonitor::Event event) { rules_->systemWide(systemWideEvent(event)); },
        .pressed = [this](quint32 time) { model_.notePress(InputTime{time}); },
    });
}

void AppDelegate::watchForTermination()
{
    QGuiApplication::setQuitOnLastWindowClosed(false); // The settings are only a window.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &AppDelegate::commitSession,
        Qt::DirectConnection);
    signals_.emplace([this] { quitFlow_.signalled(dependencies_.clock.uptime()); });
}

void AppDelegate::startModel()
{
    model_.start();
    if (options_.enableNativeApprovals && !model_.state().nativeAccessGranted) {
        openSettings();
        model_.requestNativeAccess(AppModel::NativeAccess::enableAndAsk);
    }
    if (options_.demo)
        model_.showDemo(Demo::hook);
}

void AppDelegate::showNotch()
{
    layOut();
    notch_->orderFront();
}

void AppDelegate::expand()
{
    model_.expand();
    bringForward();
}

void AppDelegate::openSettings()
{
    settingsWindow_.show();
}

void AppDelegate::demo()
{
    model_.showDemo(Demo::hook);
    bringForward();
}

void AppDelegate::demoNative()
{
    model_.showDemo(Demo::native);
    bringForward();
}

void AppDelegate::openQuillMoss()
{
    model_.openHost(std::nullopt);
}

void AppDelegate::quit()
{
    quitFlow_.quit();
}

// Above the question the notch would be in its way, and dead.
void AppDelegate::bringForward()
{
    if (quitFlow_.isAsking())
        quitAlert_.bringForward();
    else
        orderPanelFront();
}

void AppDelegate::scheduleLayout()
{
    if (layoutScheduled_)
        return;
    layoutScheduled_ = true;
    dependencies_.mainQueue.post([this] {
        layoutScheduled_ = false;
        layOut();
    });
}

void AppDelegate::layOut()
{
    if (!notch_)
        return;
    notch_->layOut();
    settingsWindow_.refresh();
    updateToolTip();
}

void AppDelegate::updateToolTip()
{
    const auto count = model_.state().interaction.requests().size();
    statusItem_->setToolTip(
        count == 0 ? description + u" · 待命"_s : QString::number(count) + u" 条请求等待确认"_s);
}

// Nothing for what is not looked at. An event comes to its native window first and is then handed
// on to the widgets in it: only the first counts.
std::optional<InputRules::Event> AppDelegate::monitored(
    const QObject& receiver, const QEvent& event) const
{
    using Event = InputRules::Event;
    if (!receiver.isWindowType())
        return std::nullopt;
    if (event.type() == QEvent::MouseMove)
        return Event::other;
    if (event.type() == QEvent::KeyPress)
        return static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape ? Event::escapeKey
                                                                            : Event::other;
    if (event.type() != QEvent::MouseButtonPress)
        return std::nullopt;
    const auto button = static_cast<const QMouseEvent&>(event).button();
    if (button != Qt::LeftButton && button != Qt::RightButton)
        return std::nullopt;
    return &receiver == notch_->panel().windowHandle() ? Event::pressInPanel
                                                       : Event::pressElsewhere;
}

bool AppDelegate::eventFilter(QObject* receiver, QEvent* event)
{
    const auto seen = monitored(*receiver, *event);
    return seen && rules_->inApplication(*seen) == InputRules::Handling::swallow;
}

// The session's manager asks every program before it ends the session.
void AppDelegate::commitSession(QSessionManager& session)
{
    if (!quitFlow_.shouldTerminate())
        session.cancel();
}

bool AppDelegate::panelIsOnScreen() const
{
    return notch_ && notch_->panel().isOnScreen();
}

void AppDelegate::orderPanelFront()
{
    notch_->orderFront();
}

void AppDelegate::orderPanelOut()
{
    notch_->orderOut();
}

void AppDelegate::ask(const QuitQuestion& question, std::function<void(Answer)> answered)
{
    quitAlert_.ask(question, std::move(answered));
}

void AppDelegate::terminate()
{
    QCoreApplication::exit();
}

} // namespace notch
