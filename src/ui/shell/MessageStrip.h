// SPDX-License-Identifier: MIT
#pragma once

#include "style/Theme.h"

#include <QWidget>

class ElidedLabel;
class QHBoxLayout;
class SymbolLabel;

/// A slim strip across the content that tells something: an icon, a selectable line and a
/// button that closes it. It takes no room while it has nothing to tell.
class MessageStrip : public QWidget {
    Q_OBJECT

public:
    [[nodiscard]] QString message() const;

protected:
    static constexpr double textSize = 12;

    /// `subject` is what the strip is about; it and its message are named after that.
    MessageStrip(const QString& subject, int height, QWidget* parent);

    void setLook(const QString& symbol, ThemeColor symbolColor, ThemeColor fill);
    void setMessage(const QString& message);
    // In the order in which they stand, which is also that of the keyboard.
    void addWidget(QWidget* widget, int stretch = 0);
    void addCloseButton(const QString& name);

    [[nodiscard]] QColor fill() const { return Theme::of(this).*m_fill; }

    void paintEvent(QPaintEvent* event) override;

Q_SIGNALS:
    void closeRequested();

private:
    SymbolLabel* m_symbol;
    ElidedLabel* m_message;
    QHBoxLayout* m_layout;
    ThemeColor m_fill{&Theme::content};
};
