// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class BrewManager;
class FailureStrip;
class Page;
class PageHeader;
class QVBoxLayout;

/// The right column: a page below its header, with the failure strip between them.
class DetailColumn final : public QWidget {
    Q_OBJECT

public:
    explicit DetailColumn(BrewManager& manager, QWidget* parent = nullptr);

    /// Shows this page instead of the one before, which is deleted; takes it over.
    void setPage(Page* page);
    /// Shows nothing but this text.
    void setPlaceholder(const QString& text);

    /// The page shown, or null.
    [[nodiscard]] Page* page() const { return m_page; }

    [[nodiscard]] PageHeader* header() const { return m_header; }

    [[nodiscard]] FailureStrip* failureStrip() const { return m_failureStrip; }

private:
    void setContent(QWidget* content);

    QVBoxLayout* m_layout;
    PageHeader* m_header;
    FailureStrip* m_failureStrip;
    QWidget* m_content{nullptr};
    Page* m_page{nullptr};
};
