// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class BrewManager;
class ElidedLabel;
class FailureStrip;
class OperationNotice;
class OperationStrip;
class Page;
class QHBoxLayout;
class QVBoxLayout;

/// The strip above a page: its title, and its controls at the trailing end.
class PageHeader final : public QWidget {
    Q_OBJECT

public:
    explicit PageHeader(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    [[nodiscard]] QString title() const;
    /// Shows these controls instead of the ones before.
    void setControls(QWidget* controls);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    ElidedLabel* m_title;
    QHBoxLayout* m_layout;
    QWidget* m_controls{nullptr};
};

/// The right column: a page below its header, with the strips that tell of failures between them.
class DetailColumn final : public QWidget {
    Q_OBJECT

public:
    DetailColumn(BrewManager& manager, OperationNotice& notice, QWidget* parent = nullptr);

    /// Shows this page instead of the one before, which is deleted; takes it over.
    void setPage(Page* page);
    /// Shows nothing but this text.
    void setPlaceholder(const QString& text);

    /// The page shown, or null.
    [[nodiscard]] Page* page() const { return m_page; }

    /// From top to bottom.
    [[nodiscard]] QList<QWidget*> parts() const;

    [[nodiscard]] FailureStrip* failureStrip() const { return m_failureStrip; }

    [[nodiscard]] OperationStrip* operationStrip() const { return m_operationStrip; }

private:
    void setContent(QWidget* content);

    PageHeader* m_header;
    OperationStrip* m_operationStrip;
    FailureStrip* m_failureStrip;
    QVBoxLayout* m_layout;
    QWidget* m_content{nullptr};
    Page* m_page{nullptr};
};
