// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

/// A panel over its window's content, with everything behind it out of reach.
///
/// It covers its parent whole; the keyboard focus stays inside and goes back to where it
/// was when the sheet closes. What the panel holds is added to its layout.
class Sheet : public QWidget {
    Q_OBJECT

public:
    /// What the panel is: a page that has come forward, or a card with an alert put down on it.
    enum class Surface { Page, Card };

    /// `preferred` is the panel's size in a window of the usual size, and grows and shrinks with
    /// it; an invalid one means the size of its content.
    explicit Sheet(QWidget* window, QSize preferred = {}, QSize smallest = {},
                   Surface surface = Surface::Page);

    [[nodiscard]] QWidget* panel() const { return m_panel; }

    /// The sheets that cover this window, the one on top last.
    [[nodiscard]] static QList<Sheet*> allOver(const QWidget* window);
    /// The one on top, or null.
    [[nodiscard]] static Sheet* openOver(const QWidget* window);

    /// Shows the sheet and puts the focus on `focus`, or on the first widget that takes it. For
    /// the time of a double click the panel takes no press.
    void present(QWidget* focus = nullptr);

    /// Shows something above the panel, in reach like what the panel holds; takes it over. Null
    /// takes away what was there.
    void setNotice(QWidget* notice);

    /// Gives the focus to something in the sheet, after the one that is above it if there is one.
    void giveFocus(QWidget* widget);

    /// Hides the sheet, gives the focus back and deletes the sheet later.
    void dismiss();

Q_SIGNALS:
    /// Escape was pressed; closing is the owner's decision.
    void cancelRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] Sheet* above() const;
    void place();
    [[nodiscard]] QSize wantedSize() const;
    void fade();
    void refusePresses();
    [[nodiscard]] bool isInReach(const QWidget* widget) const;
    [[nodiscard]] QWidget* nextFocus(QWidget* from, bool forward) const;

    QSize m_preferred;
    QSize m_smallest;
    Surface m_surface;
    QWidget* m_panel;
    QWidget* m_notice{nullptr};
    QPointer<QWidget> m_focusBefore;
};
