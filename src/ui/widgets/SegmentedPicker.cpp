// SPDX-License-Identifier: MIT
#include "widgets/SegmentedPicker.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/DisplayText.h"
#include "widgets/KeyboardButton.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int troughPadding = 2;

class Segment final : public KeyboardButton<QAbstractButton> {
public:
    Segment(const QString& title, QWidget* parent) : KeyboardButton(parent) {
        setText(DisplayText::label(title));
        setObjectName(u"segment-"_s + title);
        setAccessibleName(title);
        setCheckable(true);
        // The group sees to that, but screen readers are told of a check box without.
        setAutoExclusive(true);
        setFont(Typography::font(Typography::body, QFont::Medium));
        setAttribute(Qt::WA_Hover);
        setFocusPolicy(Qt::StrongFocus);
    }

    [[nodiscard]] QSize sizeHint() const override {
        constexpr int padding = 20;
        return {Typography::width(font(), text()) + 2 * padding,
                Metrics::controlHeight - 2 * troughPadding};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const Theme& theme = Theme::of(this);
        const double radius = Metrics::controlRadius - troughPadding + 1;
        QPainter painter(this);
        if (isChecked())
            Painting::drawBordered(&painter, rect(), radius, theme.segment, theme.hairline);
        else if (isDown() || underMouse())
            Painting::fillRounded(&painter, rect(), radius, isDown() ? theme.pressed : theme.hover);
        if (Painting::showsFocus(this))
            Painting::drawFocusRing(&painter, rect(), radius, theme);
        painter.setPen(theme.text);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic, text());
    }
};

} // namespace

SegmentedPicker::SegmentedPicker(const QStringList& titles, const QString& accessibleName,
                                 QWidget* parent)
    : QWidget(parent), m_group(new QButtonGroup(this)) {
    Accessible::setRole(this, QAccessible::Grouping);
    setAccessibleName(accessibleName);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(troughPadding, troughPadding, troughPadding, troughPadding);
    layout->setSpacing(0);
    for (qsizetype i = 0; i < titles.size(); ++i) {
        auto* const segment = new Segment(titles.at(i), this);
        layout->addWidget(segment);
        m_group->addButton(segment, static_cast<int>(i));
    }
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(m_group, &QButtonGroup::idToggled, this, [this](int id, bool isChecked) {
        if (isChecked)
            Q_EMIT chosen(id);
    });
}

void SegmentedPicker::setCurrent(int index) {
    const QSignalBlocker quiet(m_group);
    m_group->button(index)->setChecked(true);
    // Tab comes to the choice that holds; from there the arrows lead on.
    for (QAbstractButton* const button : m_group->buttons())
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

int SegmentedPicker::current() const {
    return m_group->checkedId();
}

QAbstractButton* SegmentedPicker::segment(int index) const {
    return m_group->button(index);
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::fillRounded(&painter, rect(), Metrics::controlRadius + 1, Theme::of(this).trough);
}
