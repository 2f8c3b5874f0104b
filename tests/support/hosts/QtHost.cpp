// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// QtHost: an agent's window, as a test writes it (support/TreeText.h), in Qt. Reads commands from
// its input, a line each, and says "pressed ID" for each button that was really pressed.
//
//   show              with a tree in the lines that follow, up to a line with a full stop: its
//                     nodes become widgets at their places, in one window; in a Scroll what does
//                     not fit is out of sight
//   disable ID, remove ID, rename ID TEXT
//
// It says "done" after each command.

#include "support/TreeText.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPixmap>
#include <QPushButton>
#include <QSocketNotifier>
#include <QWidget>

#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace notch {
namespace {

QString toQString(const std::string& text)
{
    return QString::fromStdString(text);
}

void say(const std::string& line)
{
    std::cout << line << std::endl;
}

class QtHost {
public:
    void run(const std::string& line)
    {
        std::istringstream words(line);
        std::string verb, id, text;
        std::getline(words >> verb >> id >> std::ws, text);
        auto* const widget = window_.findChild<QWidget*>(toQString(id));
        if (verb == "show")
            showTree();
        else if (verb == "disable")
            widget->setEnabled(false);
        else if (verb == "remove")
            delete widget;
        else if (verb == "rename")
            rename(widget, toQString(text));
        say("done");
    }

private:
    static void rename(QWidget* widget, const QString& text)
    {
        if (auto* const label = qobject_cast<QLabel*>(widget))
            label->setText(text);
        else if (auto* const button = qobject_cast<QPushButton*>(widget))
            button->setText(text);
    }

    void showTree()
    {
        std::string tree;
        for (std::string line; std::getline(std::cin, line) && line != ".";)
            tree += line + '\n';
        qDeleteAll(window_.findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
        const auto roots = parseTree(tree);
        if (roots.empty())
            return;
        const auto& root = roots.front();
        window_.setGeometry(100, 100, int(root.frame->width), int(root.frame->height));
        window_.setWindowTitle(root.texts.empty() ? QString() : toQString(root.texts.front()));
        for (const auto& child : root.children)
            add(child, *root.frame, &window_);
        window_.show();
    }

    void add(const NativeApprovalNode& node, const ScreenRect& parentFrame, QWidget* parent)
    {
        auto* const widget = make(node, parent);
        widget->setObjectName(toQString(node.id));
        const auto frame = node.frame.value_or(parentFrame);
        widget->setGeometry(int(frame.x - parentFrame.x), int(frame.y - parentFrame.y),
            int(frame.width), int(frame.height));
        widget->setEnabled(node.enabled);
        for (const auto& child : node.children)
            add(child, frame, widget);
        if (node.visible)
            widget->show();
    }

    static QWidget* make(const NativeApprovalNode& node, QWidget* parent)
    {
        const auto text = node.texts.empty() ? QString() : toQString(node.texts.front());
        if (node.is(role::button)) {
            auto* const button = new QPushButton(text, parent);
            QObject::connect(button, &QPushButton::clicked, button,
                [button] { say("pressed " + button->objectName().toStdString()); });
            return button;
        }
        if (node.is(role::group) || node.is("AXScroll"))
            return new QWidget(parent);
        auto* const label = new QLabel(text, parent);
        label->setTextFormat(Qt::PlainText);
        if (node.is(role::image))
            label->setPixmap(QPixmap(4, 4));
        return label;
    }

    QMainWindow window_; // A plain widget would not say that it is a window.
};

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quillmoss")); // Its windows' class.
    notch::QtHost host;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&host] {
        std::string line;
        if (!std::getline(std::cin, line))
            return QApplication::quit();
        host.run(line);
        // More lines may lie in the stream's own memory, of which the descriptor knows nothing.
        while (std::cin.rdbuf()->in_avail() > 0 && std::getline(std::cin, line))
            host.run(line);
    });
    return QApplication::exec();
}
