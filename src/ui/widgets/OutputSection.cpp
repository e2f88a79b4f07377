// SPDX-License-Identifier: MIT
#include "widgets/OutputSection.h"

#include "style/Typography.h"
#include "widgets/OutputText.h"

#include <QLabel>
#include <QVBoxLayout>

OutputSection::OutputSection(const QString& heading, int spacing, QWidget* parent)
    : QWidget(parent),
      m_text(new OutputText(heading, OutputText::Frame::Box, Typography::caption, this)) {
    auto* const title = new QLabel(heading, this);
    title->setTextFormat(Qt::PlainText);
    title->setFont(Typography::font(Typography::body, QFont::DemiBold));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(title);
    layout->addWidget(m_text);
    hide();
}

void OutputSection::setOutput(const QString& output) {
    m_text->setOutput(output);
    setVisible(!output.isEmpty());
}
