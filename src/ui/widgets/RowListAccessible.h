// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ListAccessible.h"

class RowListView;

/// A list of rows as a screen reader goes through it: what can be done with a row are actions of
/// its, and the controls at its end things of their own.
class RowListAccessible final : public ListAccessible {
public:
    explicit RowListAccessible(RowListView* list);

    [[nodiscard]] QAccessibleInterface* focusChild() const override;

protected:
    [[nodiscard]] QAccessibleInterface* makeItem(int row) const override;

private:
    class RowAccessible;
    class RowActionAccessible;
};
