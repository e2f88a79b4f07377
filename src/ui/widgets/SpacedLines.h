// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextDocumentLayout>

/// Lines of plain text at an even distance, which the toolkit has formatted texts alone keep.
class SpacedLines final : public QPlainTextDocumentLayout {
    Q_OBJECT

public:
    /// `pitch` from one line to the next, in device-independent pixels; a higher line has more.
    SpacedLines(QTextDocument* document, int pitch);

    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& block) const override;

private:
    int m_pitch;
};
