// SPDX-License-Identifier: MIT
#include "widgets/SpacedLines.h"

#include <QTextBlock>
#include <QTextLayout>

SpacedLines::SpacedLines(QTextDocument* document, int pitch)
    : QPlainTextDocumentLayout(document), m_pitch(pitch) {}

QRectF SpacedLines::blockBoundingRect(const QTextBlock& block) const {
    // Lays the block out if need be, each line right below the one before.
    QRectF rect = QPlainTextDocumentLayout::blockBoundingRect(block);
    if (!block.isValid() || !block.isVisible())
        return rect;
    const QTextLayout& layout = *block.layout();
    qreal top = 0;
    for (int i = 0; i < layout.lineCount(); ++i) {
        QTextLine line = layout.lineAt(i);
        const qreal height = qMax<qreal>(m_pitch, line.height());
        line.setPosition({line.x(), top + (height - line.height()) / 2});
        top += height;
    }
    rect.setHeight(top);
    return rect;
}
