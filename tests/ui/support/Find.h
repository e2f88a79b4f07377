// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>
#include <QWidget>

/// The first visible widget of this type and, if given, this object name below `root`; null if
/// there is none. Pages that wait for their deletion are hidden and so never found.
template <class Widget = QWidget>
[[nodiscard]] Widget* findVisible(const QWidget& root, const QString& name = {}) {
    const QList<Widget*> all =
        name.isNull() ? root.findChildren<Widget*>() : root.findChildren<Widget*>(name);
    for (Widget* const widget : all) {
        if (widget->isVisible())
            return widget;
    }
    return nullptr;
}

/// The same, for what the test can't go on without: waits until it can be seen.
template <class Widget = QWidget>
[[nodiscard]] Widget& require(const QWidget& root, const QString& name = {}) {
    const auto find = [&] { return findVisible<Widget>(root, name); };
    if (!QTest::qWaitFor([&] { return find() != nullptr; }))
        qFatal("There is no visible %s \"%s\"", Widget::staticMetaObject.className(),
               qUtf8Printable(name));
    return *find();
}
