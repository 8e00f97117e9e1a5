// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/frmPing.h"

#include "core/Controls.h"
#include "core/ElidedLabel.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "core/MainForm.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "tools/Echo.h"
#include "tools/PingList.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>

#include <algorithm>

namespace {

/// Of both configurations: an address that has changed is pinged as it was and as it is.
constexpr const char* kAddresses =
    "SELECT DISTINCT DeviceData.COMPUTERNAME, DeviceNetwork.[Protocol IP] FROM DeviceData INNER JOIN "
    "DeviceNetwork ON DeviceData.[Device Auto ID] = DeviceNetwork.[Device Auto ID] WHERE "
    "(((DeviceNetwork.[Protocol IP]) Is Not Null And (DeviceNetwork.[Protocol IP])<>'')) ORDER BY "
    "DeviceData.COMPUTERNAME";
constexpr std::size_t kNameWidth = 30;
constexpr std::size_t kAddressWidth = 20;

/// The addresses in the shared recordset, which is closed whichever way the sweep ends.
class Addresses {
public:
    Addresses() : mRows(std::make_shared<ADODB::Recordset>()) {
        gRecordset = mRows;
        mRows->Open(kAddresses, gConnection);
    }
    ~Addresses() {
        try {
            if (mRows->IsOpen())
                mRows->Close();
        } catch (const RunTimeError&) {
            // The database was closed meanwhile, and the recordset with it.
            return;
        }
    }
    Addresses(const Addresses&) = delete;
    Addresses& operator=(const Addresses&) = delete;

    ADODB::Recordset& Rows() { return *mRows; }
    std::string Text(std::size_t column) { return std::string(mRows->Fields().Item(column).Text()); }

private:
    std::shared_ptr<ADODB::Recordset> mRows;
};

/// `text` in a column of `width` characters. What would break the line stands as a blank.
std::string Column(const std::string& text, std::size_t width) {
    std::string column(FirstCharacters(text, width));
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
    std::replace_if(column.begin(), column.end(), isControl, ' ');
    return column + std::string(width - CharacterCount(column), ' ');
}

} // namespace

frmPing::frmPing(const PingContext& context) : QDialog(context.form.OwnerWindow()), mContext(context) {
    setObjectName("frmPing");
    HelpTopic(*this, "ping.html");
    setWindowTitle("Ping All on network");
    BuildControls();
    BuildStatusBar();
    Load();
    FormRegistry::Instance().Load("frmPing", this, [this] { close(); });
}

frmPing::~frmPing() {
    FormRegistry::Instance().Unloaded(this);
}

void frmPing::BuildControls() {
    lstPing = new PingList(this);
    lstPing->setObjectName("lstPing");
    lstPing->setAccessibleName("Results of the pings");
    picBut = new QWidget(this);
    picBut->setObjectName("picBut");
    btnRefresh = Controls::Button(picBut, "btnRefresh", "&Refresh");
    cmdOK = Controls::Button(picBut, "cmdOK", "Close");
    cmdOK->setDefault(true);
    auto* const buttons = new QHBoxLayout(picBut);
    buttons->addStretch();
    buttons->addWidget(btnRefresh);
    buttons->addWidget(cmdOK);
    connect(btnRefresh, &QPushButton::clicked, this, &frmPing::Sweep);
    connect(cmdOK, &QPushButton::clicked, this, &frmPing::accept);
}

void frmPing::BuildStatusBar() {
    sbStatusBar = new QStatusBar(this);
    sbStatusBar->setObjectName("sbStatusBar");
    sbStatusBar->setAccessibleName("Status");
    mStatusPanel = new ElidedLabel(sbStatusBar);
    mStatusPanel->setObjectName("sbStatusBar(1)");
    sbStatusBar->addWidget(mStatusPanel, 1);
}

void frmPing::Load() {
    constexpr int kColumns = 84;
    constexpr int kRows = 24;
    mIsStopped = false;
    mStatusPanel->setText("Working...");
    const QFontMetrics line = lstPing->fontMetrics();
    resize(line.averageCharWidth() * kColumns, line.height() * kRows);
    lstPing->setFocus();
}

void frmPing::SizeControls() {
    const int status = sbStatusBar->sizeHint().height();
    const int buttons = picBut->sizeHint().height();
    sbStatusBar->setGeometry(0, height() - status, width(), status);
    picBut->setGeometry(0, height() - status - buttons, width(), buttons);
    lstPing->setGeometry(0, 0, sbStatusBar->width(), std::max(0, height() - status - buttons));
    setMinimumSize(picBut->sizeHint().width(), status + buttons + lstPing->minimumSizeHint().height());
}

void frmPing::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    SizeControls();
}

bool frmPing::event(QEvent* event) {
    const bool isDone = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest)
        SizeControls();
    // A sweep is long: it must not begin within the event.
    if (event->type() == QEvent::WindowActivate)
        QMetaObject::invokeMethod(this, &frmPing::Sweep, Qt::QueuedConnection);
    return isDone;
}

void frmPing::done(int result) {
    mIsStopped = true;
    QDialog::done(result);
}

void frmPing::Sweep() {
    if (mIsSweeping || mIsStopped)
        return;
    const QPointer<frmPing> self(this);
    mIsSweeping = true;
    try {
        PingAll();
    } catch (const RunTimeError&) {
        // Where the addresses can not be read there is nothing more to tell: Refresh stays grey.
    }
    if (self)
        mIsSweeping = false;
}

void frmPing::PingAll() {
    const QPointer<frmPing> self(this);
    btnRefresh->setEnabled(false);
    lstPing->Clear();
    lstPing->Hint({});
    Addresses addresses;
    ADODB::Recordset& rows = addresses.Rows();
    while (!rows.EndOfFile()) {
        const std::string address = addresses.Text(1);
        std::string line = Column(addresses.Text(0), kNameWidth) + " : " + Column(address, kAddressWidth);
        line += " : " + (IsPingable(address) ? PingEm(address) : "INVALID  :");
        if (!self)
            return;
        lstPing->AddLine(line);
        mStatusPanel->setText(QString::fromStdString("Pinged : " + address));
        rows.MoveNext();
        QCoreApplication::processEvents();
        if (!self || mIsStopped)
            return;
    }
    lstPing->ShowLines();
    btnRefresh->setEnabled(true);
    mStatusPanel->setText("Done");
    if (lstPing->count() == 0)
        lstPing->Hint("No addresses. The database holds no network card with an address.");
}

std::string frmPing::PingEm(const std::string& theIP) {
    const QPointer<frmPing> self(this);
    const EchoResult echo = SendEcho(mContext.probes, theIP, QEventLoop::AllEvents);
    if (echo.isForbidden && self)
        TellForbidden();
    return echo.milliseconds ? "OK       :" + std::to_string(*echo.milliseconds) + " ms" : "FAILED   :";
}

void frmPing::TellForbidden() {
    if (mForbiddenPanel != nullptr)
        return;
    mForbiddenPanel = new QLabel(kEchoForbidden, sbStatusBar);
    mForbiddenPanel->setObjectName("sbStatusBar(2)");
    sbStatusBar->addPermanentWidget(mForbiddenPanel);
}
