// SPDX-License-Identifier: MIT
#include "fuzzing.h"

#include "widgets/map/azimuthalmapimage.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>

#include <algorithm>

// Any bytes as the map image: it loads or it does not, and what was loaded can be cut and painted at any
// size.

namespace {

/// A few bytes may announce an image that takes seconds and a gigabyte; those allowed are tried by hand.
constexpr qint64 mostPixels = 1'000'000;
constexpr qint64 refusedPixels = 250'000'000;
constexpr QRect view(0, 0, 90, 60);

QString imagePath()
{
    return QCoreApplication::applicationDirPath() + "/map";
}

qint64 announcedPixels()
{
    QImageReader reader(imagePath());
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    return qint64(size.width()) * size.height();
}

void checkPainting(const QImage &image, const QRectF &target)
{
    const AzimuthalMapImage::Piece piece = AzimuthalMapImage::pieceOf(image, target, view, 1.5);
    require(piece.image.isNull() || QRectF(view).adjusted(-2, -2, 2, 2).contains(piece.target),
            "what is painted lies in the view");
    QImage canvas(view.size(), QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::black);
    QPainter painter(&canvas);
    AzimuthalMapImage::paint(painter, piece, view);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QFile file(imagePath());
    require(file.open(QIODevice::WriteOnly) && file.write(bytesOf(data, size)) == qint64(size),
            "the image can be written");
    file.close();
    const qint64 pixels = announcedPixels();
    if (pixels > mostPixels && pixels <= refusedPixels)
        return 0;
    const QImage image = AzimuthalMapImage::load(imagePath());
    require(pixels <= refusedPixels || image.isNull(), "a huge image is refused");
    require(std::max(image.width(), image.height()) <= 4096, "no side is longer than 4096");
    for (const QRectF &target :
         {QRectF(-10, -10, 120, 80), QRectF(20, 10, 5, 40), QRectF(-4000, -4000, 9000, 9000),
          QRectF(100, 70, -110, -80), QRectF(45, 30, 0.01, 0.01)})
        checkPainting(image, target);
    return 0;
}
