// SPDX-License-Identifier: MIT
#include "pages/AboutView.h"

#include "Addresses.h"
#include "L10n.h"
#include "style/Typography.h"
#include "widgets/LinkRow.h"
#include "widgets/OpenAddress.h"
#include "widgets/RoundedPicture.h"
#include "widgets/SecondaryLabel.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QWidget* makeIcon(const QString& picture) {
    constexpr int pictureSide = 120;
    constexpr double pictureRadius = 24;
    constexpr int iconSide = 96;
    if (const QPixmap pixmap(picture); !pixmap.isNull())
        return new RoundedPicture(pixmap, pictureSide, pictureRadius);
    constexpr int pixels = 4 * iconSide;
    return new RoundedPicture(QGuiApplication::windowIcon().pixmap(pixels), iconSide, 0);
}

} // namespace

AboutView::AboutView(BrewManager& manager, const QString& picture, QWidget* parent)
    : Page(manager, parent) {
    constexpr int spacing = 12;
    constexpr int columnSpacing = 32;
    constexpr int linkSpacing = 8;

    QWidget* const icon = makeIcon(picture);
    icon->setObjectName(u"aboutIcon"_s);
    auto* const name = new QLabel(u"Lumora"_s);
    name->setFont(Typography::font(Typography::pageTitle, QFont::Bold));
    name->setObjectName(u"aboutName"_s);
    // Fixed: it is not the version that releases are compared with.
    auto* const version = new SecondaryLabel(u"Version 0.1.9"_s, 12);
    version->setObjectName(u"aboutVersion"_s);

    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(spacing);
    layout->addStretch();
    layout->addWidget(icon, 0, Qt::AlignHCenter);
    layout->addWidget(name, 0, Qt::AlignHCenter);
    layout->addWidget(version, 0, Qt::AlignHCenter);
    layout->addSpacing(columnSpacing - spacing);
    auto* const links = new QVBoxLayout;
    links->setSpacing(linkSpacing);
    links->addWidget(aboutLink(u"house"_s, L10n::homePage(), Addresses::homePage));
    links->addWidget(aboutLink(u"envelope"_s, L10n::contact(), Addresses::contact));
    links->addWidget(aboutLink(u"doc.text"_s, L10n::openSourceInfo(), Addresses::repository));
    layout->addLayout(links);
    layout->setAlignment(links, Qt::AlignHCenter);
    layout->addStretch();
}

QWidget* AboutView::aboutLink(const QString& symbol, const QString& title, const QString& address) {
    auto* const link = new LinkRow(symbol, title);
    link->setObjectName(u"link-"_s + symbol);
    connect(link, &LinkRow::clicked, this, [address] { openAddress(address); });
    return link;
}

void AboutView::render() {
    setTitle(L10n::about());
}
