// SPDX-License-Identifier: MIT
#include "shell/DetailSheet.h"

#include "L10n.h"
#include "pages/PackageDetailView.h"
#include "widgets/DisplayText.h"
#include "widgets/Sheet.h"
#include "widgets/SheetFooter.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize preferredSize{560, 470};
constexpr QSize smallestSize{500, 400};

} // namespace

DetailSheet::DetailSheet(const QString& packageID, BrewManager& manager, QWidget* window)
    : QObject(window),
      m_sheet(new Sheet(window, preferredSize, smallestSize)),
      m_detail(new PackageDetailView(packageID, manager)) {
    auto* const close = new QPushButton(DisplayText::label(L10n::close()));
    close->setObjectName(u"closeDetail"_s);
    auto* const layout = new QVBoxLayout(m_sheet->panel());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_detail, 1);
    layout->addWidget(new SheetFooter(close));
    connect(close, &QPushButton::clicked, this, &DetailSheet::closeRequested);
    connect(m_sheet, &Sheet::cancelRequested, this, &DetailSheet::closeRequested);
    m_sheet->present(close);
}

void DetailSheet::dismiss() {
    if (m_sheet)
        m_sheet->dismiss();
    deleteLater();
}
