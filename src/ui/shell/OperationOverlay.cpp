// SPDX-License-Identifier: MIT
#include "shell/OperationOverlay.h"

#include "L10n.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/OutputText.h"
#include "widgets/Spinner.h"

#include <QEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int sideMargin = 16;
constexpr int bottomMargin = 8;
constexpr int padding = 12;
constexpr int rowSpacing = 8;
constexpr double panelRadius = 8;
constexpr int shadowRadius = 4;
constexpr int tallestTranscript = 80;

} // namespace

OperationOverlay::OperationOverlay(QWidget* parent)
    : QWidget(parent),
      m_output(new OutputText(L10n::output(), OutputText::Frame::None, Typography::caption2)) {
    Accessible::setRole(this, QAccessible::Notification);
    setObjectName(u"operationOverlay"_s);
    m_output->setTallest(tallestTranscript);
    m_output->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);

    auto* const running =
        new PlainLabel(L10n::running(), Typography::font(Typography::caption, QFont::Medium));
    running->setObjectName(u"runningLabel"_s);
    // The widget is larger than the panel by the shadow around it.
    constexpr int inset = padding + shadowRadius;
    setLayout(Boxes::column(
        rowSpacing,
        {Boxes::row(rowSpacing, {new Spinner(Spinner::Size::Small), running, Boxes::stretch()}),
         m_output},
        {inset, inset, inset, inset}));
    parent->installEventFilter(this);
}

void OperationOverlay::setOutput(const QString& output) {
    m_output->setOutput(output);
    place();
    // What is running stands in the first line. Only a new one is read out.
    constexpr qsizetype longest = 200;
    const QString line = DisplayText::line(output.left(longest).section(u'\n', 0, 0));
    const QString told = line.isEmpty() ? L10n::running() : L10n::running() + u' ' + line;
    if (told != accessibleName())
        Accessible::announce(this, told);
}

QString OperationOverlay::output() const {
    return m_output->output();
}

void OperationOverlay::place() {
    const QRect room = parentWidget()->rect();
    // The transcript's height follows from its width.
    resize(room.width() - 2 * (sideMargin - shadowRadius), height());
    layout()->activate();
    const int height = layout()->sizeHint().height();
    setGeometry(sideMargin - shadowRadius, room.height() - bottomMargin + shadowRadius - height,
                room.width() - 2 * (sideMargin - shadowRadius), height);
}

void OperationOverlay::showEvent(QShowEvent*) {
    // Nothing hidden is told its size: only now the transcript knows how high it is.
    place();
}

void OperationOverlay::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::of(this);
    const QRectF panel =
        QRectF(rect()).adjusted(shadowRadius, shadowRadius, -shadowRadius, -shadowRadius);
    QPainter painter(this);
    Painting::drawShadow(&painter, panel, panelRadius, shadowRadius, theme.overlayShadow);
    Painting::drawBordered(&painter, panel, panelRadius, theme.overlay, theme.fieldBorder);
}

bool OperationOverlay::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}
