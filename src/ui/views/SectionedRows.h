// SPDX-License-Identifier: MIT
#pragma once

#include "L10n.h"
#include "widgets/RowModel.h"

#include <QList>

/// The rows of a list with formulae under one heading and casks under another; a section
/// without entries has no heading either.
template <class Record>
class SectionedRows final {
public:
    /// Returns whether these are other lists than before.
    bool update(const QList<Record>& formulae, const QList<Record>& casks) {
        if (formulae.isSharedWith(m_formulae) && casks.isSharedWith(m_casks))
            return false;
        m_formulae = formulae;
        m_casks = casks;
        return true;
    }

    [[nodiscard]] int count() const { return countOf(m_formulae) + countOf(m_casks); }

    [[nodiscard]] bool isHeading(int row) const {
        return row == 0 || (row == countOf(m_formulae) && !m_casks.isEmpty());
    }

    [[nodiscard]] Row heading(int row) const {
        const bool isFormulae = row < countOf(m_formulae);
        const QString title = isFormulae ? L10n::formulae() : L10n::casks();
        const qsizetype size = isFormulae ? m_formulae.size() : m_casks.size();
        return {.kind = Row::Kind::Section,
                .title = title + QStringLiteral(" (") + QString::number(size) + u')'};
    }

    /// The record behind a row that is no heading.
    [[nodiscard]] const Record& record(int row) const {
        const int inCasks = row - countOf(m_formulae);
        return inCasks < 0 ? m_formulae.at(row - 1) : m_casks.at(inCasks - 1);
    }

private:
    [[nodiscard]] static int countOf(const QList<Record>& records) {
        return records.isEmpty() ? 0 : static_cast<int>(records.size()) + 1;
    }

    QList<Record> m_formulae;
    QList<Record> m_casks;
};
