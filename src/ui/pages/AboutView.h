// SPDX-License-Identifier: MIT
#pragma once

#include "views/Page.h"

class QScrollArea;

/// The application's icon, name and version, and where to find more about it.
class AboutView final : public Page {
    Q_OBJECT

public:
    /// `picture` is the path of the application's picture in its bundle; without a readable
    /// one its icon is shown, smaller.
    AboutView(BrewManager& manager, const QString& picture, QWidget* parent = nullptr);

    void setCoveredHeight(int height) override;

protected:
    void render() override;

private:
    QScrollArea* m_scroll;
};
