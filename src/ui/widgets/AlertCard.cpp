// SPDX-License-Identifier: MIT
#include "widgets/AlertCard.h"

#include "style/FocusMarks.h"
#include "style/LumoraStyle.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/PushButton.h"
#include "widgets/ScrollPane.h"
#include "widgets/SymbolLabel.h"
#include "widgets/WholeWords.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int narrowest = 360;
constexpr int widest = 560;
constexpr int padding = 22;
constexpr int bottomPadding = 18;
constexpr int iconSize = 35;
constexpr int iconSpacing = 14;
constexpr int besideText = padding + iconSize + iconSpacing + padding;

/// The label as high as its text is at that width.
QLabel* wrapped(QLabel* label, const QString& text, int width) {
    label->setText(text);
    label->setWordWrap(true);
    label->setFixedSize(width, label->heightForWidth(width));
    return label;
}

/// Title and message, in a column that is as wide as the longest word in them needs.
QWidget* makeTexts(const QString& title, const QString& message) {
    constexpr int spacing = 8;
    constexpr int tallest = 240;
    auto* const heading =
        new PlainLabel({}, Typography::digits(Typography::headerTitle, QFont::DemiBold));
    heading->setObjectName(u"alertTitle"_s);
    heading->setAccessibleName(title);
    auto* const text = new SecondaryLabel({}, Typography::body);
    text->setObjectName(u"alertMessage"_s);
    text->setAccessibleName(message);

    const auto [shownTitle, titleWidth] = wholeWords(title, heading->font(), widest - besideText);
    const auto [shownText, textWidth] = wholeWords(message, text->font(), widest - besideText);
    const int width = std::max({narrowest - besideText, titleWidth, textWidth});
    auto* const texts = new QWidget;
    QVBoxLayout* const column = Boxes::column(
        spacing, {wrapped(heading, shownTitle, width), wrapped(text, shownText, width)});
    texts->setLayout(column);
    const int height = column->sizeHint().height();
    if (height <= tallest)
        return texts;
    // However much there is to read, the answers stay in sight.
    auto* const pane = new ScrollPane(texts);
    pane->setAccessibleName(title);
    constexpr int margins = 2 * ScrollPane::focusMargin;
    pane->setFixedSize(width + margins, tallest);
    return pane;
}

} // namespace

AlertCard::AlertCard(const Alert::Question& question, QWidget* window)
    : Sheet(window, {}, {}, Surface::Card),
      m_default(question.isDestructive ? question.answers.size() - 1 : 0) {
    constexpr int spacing = 24;
    constexpr int buttonSpacing = 10;
    const QString title = DisplayText::line(question.title);
    // How long a word may be is decided here by its width.
    const QString message = DisplayText::paragraph(question.message).remove(u'\u200B');
    setAccessibleName(title);
    setAccessibleDescription(message);

    const bool isWarning = question.style == Alert::Style::Warning;
    auto* const icon = new SymbolLabel(isWarning ? u"exclamationmark.triangle"_s : u"info.circle"_s,
                                       iconSize, isWarning ? &Theme::outdated : &Theme::accent);
    QHBoxLayout* const buttons = Boxes::row(buttonSpacing, {Boxes::stretch()});
    QList<PushButton*> inPlaces;
    for (qsizetype answer = question.answers.size() - 1; answer >= 0; --answer) {
        inPlaces.prepend(makeButton(question, answer));
        buttons->addWidget(inPlaces.constFirst());
    }
    panel()->setLayout(
        Boxes::column(spacing,
                      {Boxes::row(iconSpacing, {{icon, 0, Qt::AlignTop},
                                                {makeTexts(title, message), 0, Qt::AlignTop},
                                                Boxes::stretch()}),
                       buttons},
                      {padding, padding, padding, bottomPadding}));
    connect(this, &Sheet::cancelRequested, this,
            [this, last = question.answers.size() - 1] { give(last); });
    present(inPlaces.at(m_default));
    // The safe answer doesn't stand out otherwise.
    if (question.isDestructive)
        FocusMarks::show(this->window());
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    QApplication::alert(this->window());
}

PushButton* AlertCard::makeButton(const Alert::Question& question, qsizetype answer) {
    auto* const button = new PushButton(question.answers.at(answer));
    if (answer == 0 && question.isDestructive)
        LumoraStyle::setProminence(button, LumoraStyle::Prominence::Destructive);
    else if (answer == 0)
        button->setDefault(true);
    connect(button, &PushButton::clicked, this, [this, answer] { give(answer); });
    return button;
}

void AlertCard::give(qsizetype answer) {
    dismiss();
    Q_EMIT answered(answer);
}

void AlertCard::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        give(m_default);
    else
        Sheet::keyPressEvent(event);
}
