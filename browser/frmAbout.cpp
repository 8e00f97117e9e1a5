// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frmAbout.h"

#include "browser/Images.h"
#include "core/Admin.h"
#include "core/HelpKey.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

#include <sqlite3.h>

#include <array>

namespace {

struct Line {
    const char* name;
    QString text;
    bool isTitle;
};

} // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName("frmAbout");
    HelpTopic(*this, "menus.html#help");
    setWindowTitle("About Mova Pro Admin");
    const std::array<Line, 4> lines = {{
        {"lblProduct", "MOVA Professional Administration Module", true},
        {"lblVersion", "Version " + QString::fromStdString(Admin::LongVersionText()), false},
        {"lblLicence",
         "Free software under the GNU General Public License, version 3 or later (GPL-3.0-or-later). "
         "It comes without any warranty.",
         false},
        {"lblLibraries", QString("Built on Qt %1 and SQLite %2.").arg(qVersion(), sqlite3_libversion()),
         false},
    }};
    auto* const layout = new QGridLayout(this);
    auto* const picture = new QLabel(this);
    picture->setPixmap(ProgramIcon().pixmap(QSize(64, 64), devicePixelRatio()));
    layout->addWidget(picture, 0, 0, static_cast<int>(lines.size()), 1, Qt::AlignTop);
    layout->setHorizontalSpacing(2 * layout->horizontalSpacing());
    int row = 0;
    for (const Line& line : lines) {
        auto* const label = new QLabel(line.text, this);
        label->setObjectName(line.name);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
        if (line.isTitle) {
            QFont font = label->font();
            font.setBold(true);
            label->setFont(font);
        }
        layout->addWidget(label, row++, 1);
    }
    layout->setColumnStretch(1, 1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons, row, 0, 1, 2);
    setMinimumWidth(fontMetrics().averageCharWidth() * 64);
}
