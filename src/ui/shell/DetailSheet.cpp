// SPDX-License-Identifier: MIT
#include "shell/DetailSheet.h"

#include "L10n.h"
#include "pages/PackageDetailView.h"
#include "style/Metrics.h"
#include "style/Theme.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"

#include <QPainter>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize preferredSize{560, 470};
constexpr QSize smallestSize{500, 400};

/// The strip at the bottom, with a button at its trailing end.
class Footer final : public QWidget {
public:
    explicit Footer(QWidget* button) {
        constexpr int height = 52;
        constexpr int margin = 14;
        setObjectName(u"sheetFooter"_s);
        setFixedHeight(height);
        setLayout(Boxes::row(0, {Boxes::stretch(), button}, {margin, 0, margin, 0}));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const Theme& theme = Theme::of(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        // Rounded like the sheet below, straight above: the upper corners lie outside the strip.
        painter.setClipRect(rect());
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.sidebar);
        painter.drawRoundedRect(rect().adjusted(0, -height(), 0, 0), Metrics::sheetRadius,
                                Metrics::sheetRadius);
        painter.fillRect(0, 0, width(), 1, theme.hairline);
    }
};

} // namespace

DetailSheet::DetailSheet(const QString& packageID, BrewManager& manager, QWidget* window)
    : Sheet(window, preferredSize, smallestSize),
      m_detail(new PackageDetailView(packageID, manager)) {
    auto* const close = new QPushButton(DisplayText::label(L10n::close()));
    close->setObjectName(u"closeDetail"_s);
    connect(close, &QPushButton::clicked, this, &Sheet::cancelRequested);
    panel()->setLayout(Boxes::column(0, {{m_detail, 1}, new Footer(close)}));
    present(close);
}
