// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/Documents.h"

#include "platform/errors.h"

#include <QFile>

/// A static library's resources are linked in only when they are asked for by name, outside of any namespace.
static void LoadDocuments() {
    Q_INIT_RESOURCE(documents);
}

std::string DocumentText(const std::string& name) {
    LoadDocuments();
    QFile file(":/reports/" + QString::fromStdString(name) + ".rpt");
    if (!file.open(QIODevice::ReadOnly))
        Raise(Errors::kFileNotFound, name);
    return file.readAll().toStdString();
}

std::shared_ptr<report::Report> MakeReport(const std::string& name) {
    return std::make_shared<report::Report>(DocumentText(name), name, DocumentText);
}
