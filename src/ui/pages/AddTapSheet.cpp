// SPDX-License-Identifier: MIT
#include "pages/AddTapSheet.h"

#include "Blanks.h"
#include "L10n.h"
#include "style/Metrics.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"
#include "widgets/PushButton.h"
#include "widgets/Spinner.h"
#include "widgets/TextField.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

AddTapSheet::AddTapSheet(QWidget* window)
    : Sheet(window),
      m_field(new TextField(L10n::enterTapName())),
      m_progress(new QWidget),
      m_add(new PushButton(L10n::add())) {
    constexpr int padding = 20;
    constexpr int spacing = 16;
    constexpr int fieldWidth = 300;

    auto* const title =
        new PlainLabel(L10n::addTap(), Typography::font(Typography::body, QFont::DemiBold));
    auto* const help = new SecondaryLabel(L10n::enterTapName(), Typography::caption);

    setAccessibleName(L10n::addTap());
    m_field->setObjectName(u"tapNameField"_s);
    m_field->setPlaceholderText(u"user/repo"_s);
    m_field->setFixedSize(fieldWidth, Metrics::controlHeight);
    m_field->setMargins(Metrics::buttonRadius, Metrics::buttonRadius);

    m_progress->setLayout(
        Boxes::row(Metrics::rowSpacing, {new Spinner(Spinner::Size::Small),
                                         new PlainLabel(L10n::addingTap()), Boxes::stretch()}));
    // The sheet neither grows nor moves when it comes.
    QSizePolicy policy = m_progress->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(policy);

    auto* const cancel = new PushButton(L10n::cancel());
    cancel->setObjectName(u"cancelAddTap"_s);
    m_add->setObjectName(u"confirmAddTap"_s);
    m_add->setDefault(true);
    panel()->setLayout(
        Boxes::column(spacing,
                      {title, help, m_field, m_progress,
                       Boxes::row(Metrics::rowSpacing, {Boxes::stretch(), cancel, m_add})},
                      {padding, padding, padding, padding}));

    connect(m_field, &TextField::textChanged, this, &AddTapSheet::updateButtons);
    // The default key, whatever in the panel has the focus.
    auto* const add = new QShortcut(panel());
    add->setKeys({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    add->setContext(Qt::WidgetWithChildrenShortcut);
    connect(add, &QShortcut::activated, this, &AddTapSheet::requestAdd);
    connect(m_add, &PushButton::clicked, this, &AddTapSheet::requestAdd);
    connect(cancel, &PushButton::clicked, this, &Sheet::dismiss);
    connect(this, &Sheet::cancelRequested, this, &Sheet::dismiss);
    setAdding(false);
}

void AddTapSheet::setAdding(bool isAdding) {
    const bool hasFailed = std::exchange(m_isAdding, isAdding) && !isAdding && isVisible();
    m_progress->setVisible(isAdding);
    updateButtons();
    // There is something to be corrected.
    if (hasFailed)
        giveFocus(m_field);
}

void AddTapSheet::updateButtons() {
    m_add->setEnabled(!m_isAdding && !trimmedOfBlanks(m_field->text()).isEmpty());
}

void AddTapSheet::requestAdd() {
    if (m_add->isEnabled())
        Q_EMIT addRequested(m_field->text());
}
