// Thumbnail scaling and JPEG writing (BVThumbnail + BVNSImage) beside the same work done directly with
// QImage::scaled and QImageWriter, in the same run: a 4000 x 3000 picture to a 480 x 360 JPEG at 0.5.
#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QImageWriter>
#include <QPainter>
#include <cstdlib>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVThumbnail.hpp"

namespace {

const QImage& photo() {
    static const QImage picture = [] {
        QImage image(4000, 3000, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x)
                line[x] = qRgb(x % 256, y % 256, (x * y) % 256);
        }
        return image;
    }();
    return picture;
}

void LibraryThumbnailJPEG(benchmark::State& state) {
    for (auto _ : state) {
        const QImage thumbnail =
            bv::BVThumbnail::newThumbnailImageBasedOnImageScaleToSize(photo(), {480, 360});
        const bv::ByteData jpeg = bv::BVNSImage::JPEGDataWithCompressionFactor(thumbnail, 0.5);
        benchmark::DoNotOptimize(jpeg.data());
    }
}

void QtScaledAndWriter(benchmark::State& state) {
    for (auto _ : state) {
        const QImage thumbnail = photo().scaled(480, 360, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, "JPEG");
        writer.setQuality(50);
        writer.write(thumbnail);
        benchmark::DoNotOptimize(bytes.data());
    }
}

}  // namespace

BENCHMARK(LibraryThumbnailJPEG)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(QtScaledAndWriter)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
