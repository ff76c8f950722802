#include "ui/skin/icons.h"

#include "ui/skin/colours.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <memory>

namespace tonquay::ui {

namespace {

/// Draws one picture anew whenever it is asked, in the colour of its state.
class PictureEngine final : public QIconEngine {
public:
    PictureEngine(QString name, const QColor& colour) : name_(std::move(name)), colour_(colour) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        QFile file(QStringLiteral(":/skin/icons/") + name_ + QStringLiteral(".svg"));
        if (!file.open(QIODevice::ReadOnly))
            return;
        const QColor& colour = mode == QIcon::Disabled ? colours::dim : colour_;
        QByteArray picture = file.readAll();
        picture.replace("#000", colour.name().toLatin1());
        QSvgRenderer renderer(picture);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        painter->setRenderHint(QPainter::Antialiasing);
        renderer.render(painter, QRectF(rect));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return std::make_unique<PictureEngine>(name_, colour_).release(); }

private:
    QString name_;
    QColor colour_;
};

}

QIcon icon(const QString& name)
{
    return icon(name, colours::text);
}

QIcon icon(const QString& name, const QColor& colour)
{
    return QIcon(std::make_unique<PictureEngine>(name, colour).release());
}

}
