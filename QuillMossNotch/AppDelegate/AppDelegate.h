// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppDelegate/InputRules.h"
#include "AppDelegate/LaunchOptions.h"
#include "AppDelegate/NotchStage.h"
#include "AppDelegate/QuitAlert.h"
#include "AppDelegate/QuitEffects.h"
#include "AppDelegate/QuitFlow.h"
#include "AppDelegate/SettingsWindow.h"
#include "AppModel/AppModel.h"
#include "Platform/Pointer/PointerMonitor.h"
#include "Platform/Signals/TerminationSignals.h"
#include "Platform/StatusItem/StatusItem.h"

#include <QObject>

#include <optional>

class QSessionManager;

namespace notch {

// The resident application's owner: holds the one model and everything on the screen, sets the
// order of the launch and, with QuitFlow, whether the program ends. Knows nothing of bridges and
// reminders; it asks the model. Main thread.
//
//   AppDelegate delegate(dependencies, hookFiles, LaunchOptions::parse(arguments));
//   delegate.launch();
//   application.exec();
//   delegate.willTerminate();
class AppDelegate final : public QObject, private QuitEffects {
public:
    // `dependencies` and `hookFiles` hold borrowed things, which must outlive the delegate.
    AppDelegate(const AppModel::Dependencies& dependencies, const HookFlow::Surroundings& hookFiles,
        LaunchOptions options);
    ~AppDelegate() override;
    Q_DISABLE_COPY_MOVE(AppDelegate)

    void launch();
    // After the event loop. Ends every wait of a hook without an answer.
    void willTerminate();

private:
    struct MenuEntry;
    static const MenuEntry menu[];

    // The menu's actions.
    void expand();
    void openSettings();
    void demo();
    void demoNative();
    void openQuillMoss();
    void quit();

    void buildStatusItem();
    void buildNotch();
    void connectModel();
    void startMonitors();
    void watchForTermination();
    void startModel();
    void showNotch();

    void bringForward();
    void scheduleLayout();
    void layOut();
    void updateToolTip();
    std::optional<InputRules::Event> monitored(const QObject& receiver, const QEvent& event) const;
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void commitSession(QSessionManager& session);

    bool panelIsOnScreen() const override;
    void orderPanelFront() override;
    void orderPanelOut() override;
    void ask(const QuitQuestion& question, std::function<void(Answer)> answered) override;
    void terminate() override;

    AppModel::Dependencies dependencies_;
    LaunchOptions options_;
    AppModel model_;
    QuitFlow quitFlow_;
    QuitAlert quitAlert_;
    SettingsWindow settingsWindow_;
    // From the launch on:
    std::optional<StatusItem> statusItem_;
    std::optional<NotchStage> notch_;
    std::optional<InputRules> rules_;
    std::optional<PointerMonitor> pointerMonitor_;
    std::optional<TerminationSignals> signals_;
    bool layoutScheduled_ = false;
};

} // namespace notch
