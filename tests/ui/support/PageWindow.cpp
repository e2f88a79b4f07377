// SPDX-License-Identifier: MIT
#include "PageWindow.h"

#include "views/Page.h"

#include <QTest>

void PageWindow::show(Page* page) {
    constexpr QSize size{720, 600};
    column.setPage(page);
    column.resize(size);
    column.show();
    if (!QTest::qWaitForWindowActive(&column))
        qFatal("The page's window doesn't become active");
}
