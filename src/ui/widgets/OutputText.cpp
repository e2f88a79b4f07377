// SPDX-License-Identifier: MIT
#include "widgets/OutputText.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/SpacedLines.h"

#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <cmath>

namespace {

constexpr double lineHeight = 1.45;

/// What has a place of its own in a row, as wide as any in a monospaced typeface: blanks hang over
/// its end, and marks stand above others.
bool isLetter(QChar character) {
    return character > u' ' && character <= u'~';
}

} // namespace

OutputText::OutputText(const QString& accessibleName, Frame frame, double textSize, QWidget* parent)
    : QPlainTextEdit(parent), m_frame(frame), m_linePitch(qRound(lineHeight * textSize)) {
    constexpr int boxPadding = 8;
    auto* const lines = new QTextDocument(this);
    lines->setDocumentLayout(new SpacedLines(lines, m_linePitch));
    setDocument(lines);
    setAccessibleName(accessibleName);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setFrameShape(NoFrame);
    setFont(Typography::monospace(textSize));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    const int padding = frame == Frame::Box ? boxPadding : 0;
    setViewportMargins(padding, padding, padding, padding);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    applyColors();
}

void OutputText::setOutput(const QString& output) {
    if (output == m_output)
        return;
    m_output = output;
    QString shown = DisplayText::block(output);
    // The line break that ends the output is no empty line to show.
    if (shown.endsWith(u'\n'))
        shown.chop(1);
    m_letterCount = static_cast<double>(std::ranges::count_if(shown, isLetter));
    setPlainText(shown);
    fitHeight();
}

void OutputText::setTallest(int height) {
    m_tallest = height;
    fitHeight();
}

void OutputText::fillRoom() {
    m_fillsRoom = true;
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void OutputText::scrollToEnd() {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

/// Without laying anything out, which takes far longer.
int OutputText::fewestRows() const {
    const double length = m_letterCount * QFontMetricsF(font()).horizontalAdvance(u'i');
    return std::max(document()->blockCount(),
                    static_cast<int>(length / std::max(1, viewport()->width())));
}

void OutputText::fitHeight() {
    if (m_fillsRoom)
        return;
    const QMargins margins = viewportMargins();
    const int limit = m_tallest - margins.top() - margins.bottom();
    qreal height = fewestRows() * m_linePitch;
    if (height <= limit) {
        height = 0;
        // Asking for a block's place lays it out; what is beyond the limit needn't be.
        for (QTextBlock block = document()->begin(); block.isValid() && height <= limit;
             block = block.next())
            height += blockBoundingRect(block).height();
    }
    const bool fits = height <= limit;
    setVerticalScrollBarPolicy(fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    setFixedHeight(fits ? static_cast<int>(std::ceil(height)) + margins.top() + margins.bottom() + 1
                        : m_tallest);
}

void OutputText::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        fitHeight();
}

void OutputText::wheelEvent(QWheelEvent* event) {
    if (verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff)
        event->ignore();
    else
        QPlainTextEdit::wheelEvent(event);
}

void OutputText::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void OutputText::applyColors() {
    const QColor color = Theme::of(this).secondaryText;
    if (palette().color(QPalette::Text) == color)
        return;
    QPalette changed = palette();
    changed.setColor(QPalette::Text, color);
    changed.setColor(QPalette::Base, Qt::transparent);
    setPalette(changed);
}

bool OutputText::event(QEvent* event) {
    if (event->type() != QEvent::Paint)
        return QPlainTextEdit::event(event);
    // The surface below the viewport, which the text alone is drawn on.
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    if (m_frame == Frame::Box)
        Painting::drawBordered(&painter, rect(), Metrics::buttonRadius, theme.output,
                               theme.hairline);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), Metrics::buttonRadius, theme);
    return true;
}

OutputSection::OutputSection(const QString& heading, int spacing, QWidget* parent)
    : QWidget(parent),
      m_text(new OutputText(heading, OutputText::Frame::Box, Typography::caption)) {
    const QFont headline = Typography::font(Typography::body, QFont::DemiBold);
    setLayout(Boxes::column(spacing, {new PlainLabel(heading, headline), m_text}));
    hide();
}

void OutputSection::setOutput(const QString& output) {
    m_text->setOutput(output);
    setVisible(!output.isEmpty());
}
