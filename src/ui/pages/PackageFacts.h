// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QVBoxLayout;
struct BrewPackage;

/// The upper part of a package's detail: header, description, details, dependencies.
class PackageFacts final : public QWidget {
    Q_OBJECT

public:
    explicit PackageFacts(const BrewPackage& package, QWidget* parent = nullptr);

private:
    void addHeader(const BrewPackage& package);
    void addDescription(const BrewPackage& package);
    void addDetails(const BrewPackage& package);
    void addDependencies(const BrewPackage& package);

    QVBoxLayout* m_layout;
};
