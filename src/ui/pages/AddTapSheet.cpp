// SPDX-License-Identifier: MIT
#include "pages/AddTapSheet.h"

#include "Blanks.h"
#include "L10n.h"
#include "style/Metrics.h"
#include "style/Typography.h"
#include "widgets/DisplayText.h"
#include "widgets/SecondaryLabel.h"
#include "widgets/Sheet.h"
#include "widgets/Spinner.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

AddTapSheet::AddTapSheet(QWidget* window)
    : QObject(window),
      m_sheet(new Sheet(window, {})),
      m_field(new QLineEdit),
      m_progress(new QWidget),
      m_add(new QPushButton(DisplayText::label(L10n::add()))) {
    constexpr int padding = 20;
    constexpr int spacing = 16;
    constexpr int fieldWidth = 300;
    constexpr double headline = 13;

    auto* const title = new QLabel(L10n::addTap());
    title->setTextFormat(Qt::PlainText);
    title->setFont(Typography::font(headline, QFont::DemiBold));
    auto* const help = new SecondaryLabel(L10n::enterTapName(), Typography::caption);

    m_field->setObjectName(u"tapNameField"_s);
    m_field->setPlaceholderText(u"user/repo"_s);
    m_field->setAccessibleName(L10n::enterTapName());
    m_field->setFixedSize(fieldWidth, Metrics::controlHeight);
    m_field->setTextMargins(Metrics::buttonRadius, 0, Metrics::buttonRadius, 0);

    auto* const progressText = new QLabel(L10n::addingTap());
    progressText->setTextFormat(Qt::PlainText);
    auto* const progress = new QHBoxLayout(m_progress);
    progress->setContentsMargins(0, 0, 0, 0);
    progress->setSpacing(Metrics::rowSpacing);
    progress->addWidget(new Spinner(Spinner::Size::Small));
    progress->addWidget(progressText);
    progress->addStretch();

    auto* const cancel = new QPushButton(DisplayText::label(L10n::cancel()));
    cancel->setObjectName(u"cancelAddTap"_s);
    m_add->setObjectName(u"confirmAddTap"_s);
    m_add->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(Metrics::rowSpacing);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(m_add);

    auto* const layout = new QVBoxLayout(m_sheet->panel());
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(spacing);
    layout->addWidget(title);
    layout->addWidget(help);
    layout->addWidget(m_field);
    layout->addWidget(m_progress);
    layout->addLayout(buttons);

    connect(m_field, &QLineEdit::textChanged, this, &AddTapSheet::updateButtons);
    connect(m_field, &QLineEdit::returnPressed, this, &AddTapSheet::requestAdd);
    connect(m_add, &QPushButton::clicked, this, &AddTapSheet::requestAdd);
    connect(cancel, &QPushButton::clicked, this, &AddTapSheet::dismiss);
    connect(m_sheet, &Sheet::cancelRequested, this, &AddTapSheet::dismiss);
    setAdding(false);
}

void AddTapSheet::present() {
    m_sheet->present(m_field);
}

void AddTapSheet::dismiss() {
    if (m_sheet)
        m_sheet->dismiss();
    deleteLater();
}

void AddTapSheet::setAdding(bool isAdding) {
    if (!m_sheet)
        return;
    m_isAdding = isAdding;
    m_progress->setVisible(isAdding);
    m_sheet->fitContent();
    updateButtons();
}

void AddTapSheet::updateButtons() {
    m_add->setEnabled(!m_isAdding && !trimmedOfBlanks(m_field->text()).isEmpty());
}

void AddTapSheet::requestAdd() {
    if (m_add->isEnabled())
        Q_EMIT addRequested(m_field->text());
}
