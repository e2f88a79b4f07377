// SPDX-License-Identifier: MIT
//
// What Lumora's start and memory are held against: the toolkit's own widgets where Lumora has its
// sidebar, its header and its list, with as many lines of text as it usually shows.
#include "FirstFrame.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>

using namespace Qt::StringLiterals;

int main(int argc, char* argv[]) {
    const auto then = FirstFrame::takeLast(argc, argv);
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(900, 600);

    auto* const sidebar = new QListWidget;
    sidebar->addItems({u"Formulae"_s, u"Casks"_s, u"Updates"_s, u"Search"_s, u"Taps"_s,
                       u"Settings"_s, u"About"_s});
    sidebar->setFixedWidth(180);
    auto* const refresh = new QToolButton;
    // One from the desktop's set of icons would cost as much as all the rest of the window.
    refresh->setArrowType(Qt::RightArrow);
    auto* const header = new QHBoxLayout;
    header->addWidget(new QLineEdit);
    header->addWidget(refresh);
    auto* const list = new QListWidget;
    for (int i = 0; i < 300; ++i)
        list->addItem(u"package-%1  %2.%3"_s.arg(i).arg(i % 13).arg(i % 31));
    auto* const column = new QVBoxLayout;
    column->addLayout(header);
    column->addWidget(list);
    auto* const columns = new QHBoxLayout(&window);
    columns->addWidget(sidebar);
    columns->addLayout(column);

    const FirstFrame firstFrame(&window, then);
    window.show();
    return QApplication::exec();
}
