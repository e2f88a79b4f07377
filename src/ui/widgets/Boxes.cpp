// SPDX-License-Identifier: MIT
#include "widgets/Boxes.h"

#include "style/Theme.h"

#include <QPainter>
#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace {

class Hairline final : public QWidget {
public:
    Hairline() { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), Theme::of(this).hairline);
    }
};

template <class Layout>
Layout* makeBox(int spacing, std::initializer_list<Boxes::Item> items, QMargins margins) {
    auto* const box = new Layout;
    box->setSpacing(spacing);
    box->setContentsMargins(margins);
    for (const Boxes::Item& item : items) {
        if (item.widget != nullptr)
            box->addWidget(item.widget, item.stretch, item.alignment);
        else if (item.layout != nullptr)
            box->addLayout(item.layout, item.stretch);
        else
            box->addStretch();
    }
    return box;
}

} // namespace

Boxes::Item Boxes::centered(QWidget* widget) {
    return {widget, 0, Qt::AlignHCenter};
}

Boxes::Item Boxes::stretch() {
    return {};
}

QHBoxLayout* Boxes::row(int spacing, std::initializer_list<Item> items, QMargins margins) {
    return makeBox<QHBoxLayout>(spacing, items, margins);
}

QVBoxLayout* Boxes::column(int spacing, std::initializer_list<Item> items, QMargins margins) {
    return makeBox<QVBoxLayout>(spacing, items, margins);
}

QWidget* Boxes::hairline() {
    auto* const line = new Hairline;
    line->setObjectName(u"hairline"_s);
    return line;
}

QScrollArea* Boxes::scrolling(QWidget* content) {
    auto* const area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(content);
    return area;
}
