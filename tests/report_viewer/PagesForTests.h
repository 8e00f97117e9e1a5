// SPDX-License-Identifier: GPL-3.0-or-later
// Pages put together by hand, and the eyes of other programs on PDF files.
#pragma once

#include "platform/report/FontMeasure.h"
#include "platform/report/Page.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

#include <string>
#include <utility>

/// Adds a text whose line begins at `top`, in a box of 150 points.
inline report::PlacedText& Put(report::Page& page, const report::FontMeasure& measure, double left,
                               double top, std::string text, report::TextStyle style = {}) {
    report::PlacedText placed;
    placed.left = left;
    placed.top = top;
    placed.width = 150;
    placed.height = measure.LineHeight(style);
    placed.baseline = top + measure.Ascent(style);
    placed.style = style;
    placed.text = std::move(text);
    page.texts.push_back(std::move(placed));
    return page.texts.back();
}

/// What `program` of poppler's says about a file.
inline std::string Seen(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished())
        << program.toStdString() << " is missing: scripts/setup.sh installs it";
    return process.readAllStandardOutput().toStdString();
}

inline std::string PDFText(const std::string& path) {
    return Seen("pdftotext", {"-raw", QString::fromStdString(path), "-"});
}
