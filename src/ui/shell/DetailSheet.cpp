// SPDX-License-Identifier: MIT
#include "shell/DetailSheet.h"

#include "L10n.h"
#include "pages/PackageDetailView.h"
#include "widgets/Boxes.h"
#include "widgets/PushButton.h"
#include "widgets/SheetFooter.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize preferredSize{560, 470};
constexpr QSize smallestSize{500, 400};

} // namespace

DetailSheet::DetailSheet(const QString& packageID, BrewManager& manager, QWidget* window)
    : Sheet(window, preferredSize, smallestSize),
      m_detail(new PackageDetailView(packageID, manager)) {
    connect(m_detail, &PackageDetailView::titleChanged, this, &DetailSheet::setAccessibleName);
    auto* const close = new PushButton(L10n::close());
    close->setObjectName(u"closeDetail"_s);
    connect(close, &PushButton::clicked, this, &Sheet::cancelRequested);
    auto* const back = new QShortcut(QKeySequence::Back, this);
    back->setContext(Qt::WidgetWithChildrenShortcut);
    connect(back, &QShortcut::activated, this, &DetailSheet::backRequested);
    panel()->setLayout(Boxes::column(0, {{m_detail, 1}, new SheetFooter(close)}));
    present(close);
}
