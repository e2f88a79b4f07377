// SPDX-License-Identifier: MIT
//
// The least that any window of this toolkit costs.
#include "FirstFrame.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    const auto then = FirstFrame::takeLast(argc, argv);
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(900, 600);
    const FirstFrame firstFrame(&window, then);
    window.show();
    return QApplication::exec();
}
