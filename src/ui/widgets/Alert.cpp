// SPDX-License-Identifier: MIT
#include "widgets/Alert.h"

#include "widgets/DisplayText.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

void Alert::setPlainTexts(QMessageBox* box, const QString& title, const QString& message) {
    box->setWindowTitle(title);
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setInformativeText(DisplayText::paragraph(message));
    // The text format covers the first of the two texts only.
    if (auto* const label = box->findChild<QLabel*>(u"qt_msgbox_informativelabel"_s))
        label->setTextFormat(Qt::PlainText);
}

void Alert::confirm(QWidget* parent, const Confirmation& texts, std::function<void()> goAhead,
                    std::function<void()> closed) {
    auto* const box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(QMessageBox::Warning);
    setPlainTexts(box, texts.title, texts.message);
    auto* const destructive =
        box->addButton(DisplayText::label(texts.destructive), QMessageBox::DestructiveRole);
    auto* const cancel = box->addButton(DisplayText::label(texts.cancel), QMessageBox::RejectRole);
    box->setEscapeButton(cancel);
    box->setDefaultButton(cancel);
    QObject::connect(box, &QMessageBox::finished, parent,
                     [box, destructive, goAhead = std::move(goAhead), closed = std::move(closed)] {
                         const bool agreed = box->clickedButton() == destructive;
                         closed();
                         if (agreed)
                             goAhead();
                     });
    box->open();
}
