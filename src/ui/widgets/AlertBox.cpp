// SPDX-License-Identifier: MIT
#include "widgets/AlertBox.h"

#include "widgets/DisplayText.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// macOS's own box isn't told of the text format, and takes for markup what looks like it: a tag,
/// or an escaped one. With a mark in it that nobody sees it doesn't.
QString plain(QString text) {
    constexpr QChar wordJoiner = u'\u2060';
    return text.replace(u'<', QString(u'<') + wordJoiner).replace(u'&', QString(u'&') + wordJoiner);
}

} // namespace

QWidget* openAlertBox(QWidget* parent, const Alert::Question& question,
                      std::function<void(qsizetype)> answered) {
    auto* const box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(question.style == Alert::Style::Warning ? QMessageBox::Warning
                                                         : QMessageBox::Information);
    box->setWindowTitle(question.title);
    box->setTextFormat(Qt::PlainText);
    box->setText(plain(DisplayText::line(question.title)));
    box->setInformativeText(plain(DisplayText::paragraph(question.message)));
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
