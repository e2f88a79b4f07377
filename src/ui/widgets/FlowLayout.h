// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>

#include <memory>
#include <vector>

/// Lays its items out in lines from left to right and wraps where the width ends.
///
/// Every item has its ideal size. An item wider than the whole width gets a line of its own
/// and overflows. The reported width includes the spacing behind the last item of the widest
/// line.
class FlowLayout final : public QLayout {
    Q_OBJECT

public:
    /// What a pass over the items gives: where each goes, and how much room all take.
    struct Arrangement final {
        QSize size;
        std::vector<QPoint> positions;
    };

    explicit FlowLayout(int spacing = 6, QWidget* parent = nullptr);
    ~FlowLayout() override;

    /// Arranges the items in lines of at most `width` pixels; a negative width is no limit.
    [[nodiscard]] Arrangement arrange(int width) const;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};
