// SPDX-License-Identifier: MIT
#include "pages/AboutView.h"

#include "Addresses.h"
#include "L10n.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

/// A square picture with rounded corners, sharp at every pixel ratio that it has pixels for.
class RoundedPicture final : public QWidget {
public:
    RoundedPicture(QPixmap picture, int side, double radius)
        : m_picture(std::move(picture)), m_radius(radius) {
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        // As a brush, so that the corners are smooth; a clip would leave steps.
        QBrush brush(m_picture);
        const QSizeF pixels = m_picture.size();
        brush.setTransform(
            QTransform::fromScale(width() / pixels.width(), height() / pixels.height()));
        painter.setPen(Qt::NoPen);
        painter.setBrush(brush);
        painter.drawRoundedRect(rect(), m_radius, m_radius);
    }

private:
    QPixmap m_picture;
    double m_radius;
};

QWidget* makeIcon(const QString& picture) {
    constexpr int pictureSide = 120;
    constexpr double pictureRadius = 24;
    constexpr int iconSide = 96;
    if (const QPixmap pixmap(picture); !pixmap.isNull())
        return new RoundedPicture(pixmap, pictureSide, pictureRadius);
    constexpr int pixels = 4 * iconSide;
    return new RoundedPicture(QGuiApplication::windowIcon().pixmap(pixels), iconSide, 0);
}

Boxes::Item aboutLink(const QString& symbol, const QString& title, const QString& address) {
    auto* const link = new LinkRow(symbol, title, address);
    link->setObjectName(u"link-"_s + symbol);
    return Boxes::centered(link);
}

} // namespace

AboutView::AboutView(BrewManager& manager, const QString& picture, QWidget* parent)
    : Page(manager, parent) {
    constexpr int spacing = 12;
    constexpr int columnSpacing = 32;
    constexpr int linkSpacing = 8;
    using Boxes::centered;

    QWidget* const icon = makeIcon(picture);
    icon->setObjectName(u"aboutIcon"_s);
    auto* const name =
        new PlainLabel(u"Lumora"_s, Typography::font(Typography::pageTitle, QFont::Bold));
    name->setObjectName(u"aboutName"_s);
    // Fixed: it is not the version that releases are compared with.
    auto* const version = new SecondaryLabel(u"Version 0.1.9"_s, 12);
    version->setObjectName(u"aboutVersion"_s);
    auto* const content = new QWidget;
    content->setLayout(Boxes::column(
        columnSpacing,
        {Boxes::stretch(),
         Boxes::column(spacing, {centered(icon), centered(name), centered(version)}),
         Boxes::column(linkSpacing,
                       {aboutLink(u"house"_s, L10n::homePage(), Addresses::homePage),
                        aboutLink(u"envelope"_s, L10n::contact(), Addresses::contact),
                        aboutLink(u"doc.text"_s, L10n::openSourceInfo(), Addresses::repository)}),
         Boxes::stretch()}));
    setScrolledContent(content);
}

void AboutView::render() {
    setTitle(L10n::about());
}
