// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Sheet.h"

struct OperationSummary;

/// The sheet with the whole transcript of an operation that has ended, scrolled to its end.
class OutputSheet final : public Sheet {
    Q_OBJECT

public:
    OutputSheet(const OperationSummary& summary, QWidget* window);
};
