// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PDFFile.h"

#include "platform/ReplacedFile.h"
#include "platform/errors.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

#include <exception>
#include <limits>
#include <string_view>

namespace report {

namespace {

constexpr double kPointsPerInch = 72;

/// The writer asks nobody whether the disk took its bytes, and lets nothing be thrown through it: a failure
/// is kept until the page is done.
class Target final : public QIODevice {
public:
    explicit Target(ReplacedFile& file) : mFile(file) { open(QIODevice::WriteOnly); }

    bool isSequential() const override { return true; }

    void RaiseFailure() const {
        if (mFailure)
            std::rethrow_exception(mFailure);
    }

protected:
    qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }

    qint64 writeData(const char* data, qint64 size) override {
        if (mFailure)
            return -1;
        try {
            // Places in the file are kept as 32-bit numbers.
            constexpr qint64 kLargest = std::numeric_limits<qint32>::max();
            if (mWritten + size > kLargest)
                throw RunTimeError(Errors::kOutOfRange,
                                   "A PDF file can not be larger than 2 GB: choose fewer pages");
            mFile.Write({data, static_cast<std::size_t>(size)});
            mWritten += size;
            return size;
        } catch (...) {
            mFailure = std::current_exception();
            return -1;
        }
    }

private:
    ReplacedFile& mFile;
    std::exception_ptr mFailure;
    qint64 mWritten = 0;
};

} // namespace

bool WritePDF(const std::string& path, const PaintedPages& pages) {
    ReplacedFile file(path);
    Target target(file);
    {
        QPdfWriter writer(&target);
        writer.setCreator(QStringLiteral("Velmora"));
        writer.setTitle(QString::fromStdString(pages.title));
        const QPageSize size(QSizeF(pages.format.width, pages.format.height), QPageSize::Point, QString(),
                             QPageSize::ExactMatch);
        writer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF(), QPageLayout::Point));
        QPainter painter;
        for (int i = 0; i < pages.count; ++i) {
            if (!pages.progress(pages.first + i))
                return false;
            if (i == 0)
                painter.begin(&writer);
            else
                writer.newPage();
            const double scale = writer.resolution() / kPointsPerInch;
            painter.setTransform(QTransform::fromScale(scale, scale));
            pages.paint(pages.first + i, painter);
            target.RaiseFailure();
        }
        painter.end();
    }
    target.RaiseFailure();
    file.Commit();
    return true;
}

} // namespace report
