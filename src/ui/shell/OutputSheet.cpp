// SPDX-License-Identifier: MIT
#include "shell/OutputSheet.h"

#include "L10n.h"
#include "style/Metrics.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"
#include "widgets/OutputText.h"
#include "widgets/PushButton.h"
#include "widgets/SheetFooter.h"
#include "widgets/SymbolLabel.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize preferredSize{560, 460};
constexpr QSize smallestSize{500, 380};
constexpr int padding = 23;
constexpr int titleSpacing = 12;
constexpr int iconSize = 22;

} // namespace

OutputSheet::OutputSheet(OperationSummary summary, QWidget* window)
    : Sheet(window, preferredSize, smallestSize), m_summary(std::move(summary)) {
    auto* const icon = new SymbolLabel(m_summary.symbol(), iconSize, m_summary.color());
    auto* const title = new ElidedLabel(Typography::font(Typography::headerTitle, QFont::DemiBold));
    title->setObjectName(u"outputTitle"_s);
    title->setFullText(m_summary.title);
    auto* const heading = new SecondaryLabel(L10n::output(), Typography::caption);
    heading->setFont(Typography::font(Typography::caption, QFont::DemiBold));
    auto* const text = new OutputText(L10n::output(), OutputText::Frame::Box, Typography::caption);
    text->fillRoom();
    text->setOutput(m_summary.transcript);
    auto* const close = new PushButton(L10n::close());
    close->setObjectName(u"closeOutput"_s);
    connect(close, &PushButton::clicked, this, &Sheet::dismiss);
    connect(this, &Sheet::cancelRequested, this, &Sheet::dismiss);

    auto* const content =
        Boxes::column(Metrics::rowInset,
                      {Boxes::row(titleSpacing, {icon, {title, 1}}, {0, 0, 0, Metrics::rowInset}),
                       heading,
                       {text, 1}},
                      {padding, padding, padding, padding});
    panel()->setLayout(Boxes::column(0, {{content, 1}, new SheetFooter(close)}));
    setAccessibleName(m_summary.title);
    present(close);
    text->scrollToEnd();
}
