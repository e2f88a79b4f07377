// SPDX-License-Identifier: MIT
#pragma once

#include "views/Page.h"

/// The application's icon, name and version, and where to find more about it.
class AboutView final : public Page {
    Q_OBJECT

public:
    /// `picture` is the path of the application's picture in its bundle; without a readable
    /// one its icon is shown, smaller.
    AboutView(BrewManager& manager, const QString& picture, QWidget* parent = nullptr);

protected:
    void render() override;
};
