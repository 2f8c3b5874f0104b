// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// The floor for the resident application's memory: an empty window of the toolkit, and nothing
// else.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.show();
    return QApplication::exec();
}
