// SPDX-License-Identifier: MIT
#include "widgets/AlertBox.h"

#include "widgets/DisplayText.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

QWidget* openAlertBox(QWidget* parent, const Alert::Question& question,
                      std::function<void(qsizetype)> answered) {
    auto* const box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(question.style == Alert::Style::Warning ? QMessageBox::Warning
                                                         : QMessageBox::Information);
    box->setWindowTitle(question.title);
    box->setTextFormat(Qt::PlainText);
    box->setText(DisplayText::line(question.title));
    box->setInformativeText(DisplayText::paragraph(question.message));
    // The text format covers the first of the two texts only.
    if (auto* const label = box->findChild<QLabel*>(u"qt_msgbox_informativelabel"_s))
        label->setTextFormat(Qt::PlainText);

    QList<QAbstractButton*> buttons;
    const auto goingAhead =
        question.isDestructive ? QMessageBox::DestructiveRole : QMessageBox::AcceptRole;
    for (const QString& text : question.answers)
        buttons.append(box->addButton(DisplayText::label(text),
                                      buttons.isEmpty() ? goingAhead : QMessageBox::RejectRole));
    box->setEscapeButton(buttons.last());
    box->setDefaultButton(
        qobject_cast<QPushButton*>(question.isDestructive ? buttons.last() : buttons.first()));
    QObject::connect(box, &QMessageBox::finished, parent,
                     [box, buttons, answered = std::move(answered)] {
                         // A box that is closed knows of no button.
                         const qsizetype chosen = buttons.indexOf(box->clickedButton());
                         answered(chosen < 0 ? buttons.size() - 1 : chosen);
                     });
    box->open();
    return box;
}
