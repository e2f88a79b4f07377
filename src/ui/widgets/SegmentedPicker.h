// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QWidget>

class QAbstractButton;
class QButtonGroup;

/// A row of exclusive segments; the arrow keys move the choice.
class SegmentedPicker final : public QWidget {
    Q_OBJECT

public:
    SegmentedPicker(const QStringList& titles, const QString& accessibleName,
                    QWidget* parent = nullptr);

    void setCurrent(int index);
    [[nodiscard]] int current() const;
    [[nodiscard]] QAbstractButton* segment(int index) const;

Q_SIGNALS:
    /// The user chose a segment.
    void chosen(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* m_group;
};
