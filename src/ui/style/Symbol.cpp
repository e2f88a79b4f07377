// SPDX-License-Identifier: MIT
#include "style/Symbol.h"

#include "style/Theme.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

/// Renders at physical pixels: a symbol scaled up from logical ones would blur.
QPixmap tinted(const QString& name, int side, const QColor& color) {
    const QString key =
        u"symbol/%1/%2/%3"_s.arg(name, QString::number(side), color.name(QColor::HexArgb));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;

    pixmap = QPixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(u":/icons/"_s + name + u".svg"_s).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

/// Without a size of its own.
class DrawnIconEngine : public QIconEngine {
public:
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
};

class SymbolEngine final : public DrawnIconEngine {
public:
    explicit SymbolEngine(QString name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        Symbol::paint(painter, m_name, rect, palette.color(group, QPalette::ButtonText));
    }

    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(m_name); }

private:
    QString m_name;
};

class DrawingEngine final : public DrawnIconEngine {
public:
    explicit DrawingEngine(QString path) : m_path(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        QSvgRenderer(m_path).render(painter, rect);
    }

    [[nodiscard]] QIconEngine* clone() const override { return new DrawingEngine(m_path); }

private:
    QString m_path;
};

} // namespace

void Symbol::paint(QPainter* painter, const QString& name, const QRectF& rect,
                   const QColor& color) {
    const qreal ratio = painter->device()->devicePixelRatioF();
    const qreal side = qMin(rect.width(), rect.height());
    QPixmap pixmap = tinted(name, qRound(side * ratio), color);
    pixmap.setDevicePixelRatio(ratio);
    // On the grid of physical pixels, which the lines are drawn for.
    const QTransform toDevice = painter->deviceTransform();
    const QPoint corner = toDevice.map(rect.center() - QPointF(side, side) / 2).toPoint();
    painter->drawPixmap(toDevice.inverted().map(QPointF(corner)), pixmap);
}

QIcon Symbol::icon(const QString& name) {
    return QIcon(new SymbolEngine(name));
}

QIcon Symbol::drawing(const QString& path) {
    return QIcon(new DrawingEngine(path));
}
