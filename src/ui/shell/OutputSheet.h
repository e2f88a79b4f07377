// SPDX-License-Identifier: MIT
#pragma once

#include "shell/OperationSummary.h"
#include "widgets/Sheet.h"

/// The sheet with the whole transcript of an operation that has ended, scrolled to its end.
class OutputSheet final : public Sheet {
    Q_OBJECT

public:
    OutputSheet(OperationSummary summary, QWidget* window);

    [[nodiscard]] const OperationSummary& summary() const { return m_summary; }

private:
    OperationSummary m_summary;
};
