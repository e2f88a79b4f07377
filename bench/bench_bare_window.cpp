// SPDX-License-Identifier: MIT
//
// The least that any window of this toolkit costs: what Lumora's start and memory are held
// against.
#include "FirstFrame.h"

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(900, 600);
    const FirstFrame firstFrame(&window);
    window.show();
    return QApplication::exec();
}
