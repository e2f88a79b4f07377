// SPDX-License-Identifier: MIT
#include "widgets/Alert.h"

#include "widgets/AlertBox.h"
#include "widgets/AlertCard.h"

QWidget* Alert::ask(QWidget* parent, const Question& question,
                    std::function<void(qsizetype)> answered) {
#ifdef Q_OS_MACOS
    return openAlertBox(parent, question, std::move(answered));
#else
    auto* const card = new AlertCard(question, parent->window());
    QObject::connect(card, &AlertCard::answered, parent, std::move(answered));
    QObject::connect(parent, &QObject::destroyed, card, &Sheet::dismiss);
    return card;
#endif
}

void Alert::confirm(QWidget* parent, const Confirmation& texts, std::function<void()> goAhead,
                    std::function<void()> closed) {
    ask(parent,
        {.style = Style::Warning,
         .title = texts.title,
         .message = texts.message,
         .answers = {texts.destructive, texts.cancel},
         .isDestructive = true},
        [goAhead = std::move(goAhead), closed = std::move(closed)](qsizetype answer) {
            closed();
            if (answer == 0)
                goAhead();
        });
}
