// SPDX-License-Identifier: MIT
#include "PasswordDialog.h"

#include "L10n.h"
#include "style/Metrics.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 22;
constexpr int bottomPadding = 18;
constexpr int fieldWidth = 336;
constexpr int iconSide = 40;
constexpr int iconSpacing = 14;

/// Volatile, since a compiler leaves out what is written only to be forgotten.
void overwrite(const void* data, qsizetype size) {
    // Asked for otherwise, shared text would be copied, and the copy be overwritten.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    volatile char* const bytes = static_cast<char*>(const_cast<void*>(data));
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = 0;
}

QString masked(const QString& text) {
    return QString().fill(u'•', text.size());
}

/// What changes in a field is told to whoever listens on the desktop's accessibility bus, letter
/// by letter, whatever the field shows. Here nothing else changes than what is secret.
void tellMasked(QAccessibleEvent* event) {
    QAccessible::installUpdateHandler(nullptr);
    QObject* const object = event->object();
    if (event->type() == QAccessible::TextInserted) {
        const auto* const change = static_cast<QAccessibleTextInsertEvent*>(event);
        QAccessibleTextInsertEvent told(object, change->changePosition(),
                                        masked(change->textInserted()));
        QAccessible::updateAccessibility(&told);
    } else if (event->type() == QAccessible::TextRemoved) {
        const auto* const change = static_cast<QAccessibleTextRemoveEvent*>(event);
        QAccessibleTextRemoveEvent told(object, change->changePosition(),
                                        masked(change->textRemoved()));
        QAccessible::updateAccessibility(&told);
    } else if (event->type() == QAccessible::TextUpdated) {
        const auto* const change = static_cast<QAccessibleTextUpdateEvent*>(event);
        QAccessibleTextUpdateEvent told(object, change->changePosition(),
                                        masked(change->textRemoved()),
                                        masked(change->textInserted()));
        QAccessible::updateAccessibility(&told);
    } else {
        QAccessible::updateAccessibility(event);
    }
    QAccessible::installUpdateHandler(tellMasked);
}

QLabel* makeIcon(double pixelRatio) {
    auto* const icon = new QLabel;
    icon->setPixmap(QGuiApplication::windowIcon().pixmap(QSize(iconSide, iconSide), pixelRatio));
    icon->setFixedSize(iconSide, iconSide);
    return icon;
}

QWidget* makePrompt(const QString& text) {
    constexpr int usualWidth = fieldWidth - iconSide - iconSpacing;
    constexpr int tallest = 160;
    auto* const label = new SecondaryLabel(DisplayText::paragraph(text), Typography::body);
    label->setObjectName(u"prompt"_s);
    label->setWordWrap(true);
    const int width = std::max(usualWidth, label->minimumSizeHint().width());
    label->setFixedWidth(width);
    if (label->heightForWidth(width) <= tallest)
        return label;
    // However much is asked, the field stays in sight.
    label->setAlignment(Qt::AlignTop);
    QScrollArea* const area = Boxes::scrolling(label);
    area->setFixedSize(width, tallest);
    return area;
}

} // namespace

PasswordDialog::PasswordDialog(const QString& prompt)
    : QDialog(nullptr, Qt::WindowStaysOnTopHint), m_field(new QLineEdit) {
    constexpr int spacing = 18;
    constexpr int titleSpacing = 8;
    constexpr int buttonSpacing = 10;

    // Nothing in any catalogue says it; but who asks is known.
    const QString text = prompt.trimmed().isEmpty() ? u"sudo"_s : prompt.trimmed();
    setWindowTitle(u"Lumora"_s);
    auto* const title =
        new PlainLabel(u"Lumora"_s, Typography::font(Typography::headerTitle, QFont::DemiBold));

    QAccessible::installUpdateHandler(tellMasked);
    m_field->setObjectName(u"passwordField"_s);
    m_field->setAccessibleName(DisplayText::line(text));
    m_field->setEchoMode(QLineEdit::Password);
    // It would offer to copy and to undo, which the field wouldn't do.
    m_field->setContextMenuPolicy(Qt::NoContextMenu);
    m_field->setFixedSize(fieldWidth, Metrics::controlHeight);
    QFont spaced = Typography::font(Typography::body);
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    m_field->setFont(spaced);
    m_field->setTextMargins(Metrics::buttonRadius, 0, Metrics::buttonRadius, 0);

    auto* const cancel = new QPushButton(DisplayText::label(L10n::cancel()));
    cancel->setObjectName(u"cancelPassword"_s);
    auto* const ok = new QPushButton(DisplayText::label(L10n::ok()));
    ok->setObjectName(u"confirmPassword"_s);
    ok->setDefault(true);

    QVBoxLayout* const layout = Boxes::column(
        spacing,
        {Boxes::row(iconSpacing,
                    {{makeIcon(devicePixelRatioF()), 0, Qt::AlignTop},
                     Boxes::column(titleSpacing, {title, makePrompt(text), Boxes::stretch()})}),
         m_field, Boxes::row(buttonSpacing, {Boxes::stretch(), cancel, ok})},
        {padding, padding, padding, bottomPadding});
    layout->setSizeConstraint(QLayout::SetFixedSize);
    setLayout(layout);
    m_field->setFocus();

    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

QByteArray PasswordDialog::takePassword() {
    // Shared with the field as long as nobody changes it.
    const QString typed = m_field->text();
    QByteArray password = typed.toUtf8();
    overwrite(typed.constData(), typed.size() * qsizetype(sizeof(QChar)));
    m_field->clear();
    return password;
}

void PasswordDialog::wipe(QByteArray& text) {
    overwrite(text.constData(), text.size());
    text.clear();
}
