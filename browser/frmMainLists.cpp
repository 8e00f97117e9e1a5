// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of the categories: which node shows which, and the operations that fill them.
#include "browser/Categories.h"
#include "browser/CategoryLists.h"
#include "browser/ListFiller.h"
#include "browser/ListView.h"
#include "browser/frmMain.h"
#include "core/Globals.h"
#include "core/LongWork.h"

#include <algorithm>
#include <array>

namespace {

/// The bar counts machines: how many rows there will be is known only when all were read.
template <class Definition>
void Fill(MainForm& form, ListView& list, const Definition& definition, const std::string& machine,
          std::int16_t confID) {
    ShownWork work(form);
    const ListFill fill(list);
    ListFiller(list, gConnection, gRecordset, [&](std::int32_t machines) {
        work.Step(machines, gMachineCount);
    }).Fill(definition, machine, confID);
}

struct CategoryMembers {
    std::string_view suffix;
    void (frmMain::*ofAll)(ListView&, std::int16_t);
    void (frmMain::*ofOne)(ListView&, const std::string&, std::int16_t);
};

constexpr std::array<CategoryMembers, 14> kMembers = {{
    {"?MAIN", nullptr, &frmMain::Get_Main},
    {"?CPU", &frmMain::Get_CPU_All, &frmMain::Get_CPU},
    {"?DEV", &frmMain::Get_DEV_All, &frmMain::Get_DEV},
    {"?DEVDISP", &frmMain::Get_DEVDISP_All, &frmMain::Get_DEVDISP},
    {"?DEVMB", &frmMain::Get_DEVMB_All, &frmMain::Get_DEVMB},
    {"?DEVNET", &frmMain::Get_DEVNET_All, &frmMain::Get_DEVNET},
    {"?DRV", &frmMain::Get_DRV_All, &frmMain::Get_DRV},
    {"?DRVDETAIL", &frmMain::Get_DRVDETIAL_All, &frmMain::Get_DRVDETIAL},
    {"?IO", &frmMain::Get_IO_All, &frmMain::Get_IO},
    {"?MSO", &frmMain::Get_MSO_All, &frmMain::Get_MSO},
    {"?ODB", &frmMain::Get_ODB_All, &frmMain::Get_ODB},
    {"?OS", &frmMain::Get_OS_All, &frmMain::Get_OS},
    {"?PRN", &frmMain::Get_PRN_All, &frmMain::Get_PRN},
    {"?UNI", &frmMain::Get_UNI_All, &frmMain::Get_UNI},
}};

/// Every category has its lists, so that a category that is known is found here.
constexpr bool HaveAllCategoriesLists() {
    return std::ranges::all_of(kCategories, [](const Category& category) {
        return std::ranges::find(kMembers, category.suffix, &CategoryMembers::suffix) != kMembers.end();
    });
}
static_assert(HaveAllCategoriesLists());

} // namespace

void frmMain::ShowCategory(const std::string& key) {
    const std::size_t question = key.find('?');
    const std::string prefix = key.substr(0, question);
    const std::string_view suffix = std::string_view(key).substr(question);
    const auto* const members = std::find_if(
        kMembers.begin(), kMembers.end(), [suffix](const CategoryMembers& m) { return m.suffix == suffix; });
    if (prefix == "ALL")
        (this->*members->ofAll)(*lvListView, mShowConf);
    else
        (this->*members->ofOne)(*lvListView, prefix, mShowConf);
}

// Its two tables hold no configuration.
void frmMain::Get_Main(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kMachine, machine, confID);
}

void frmMain::Get_CPU_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kProcessorsOfAll, {}, confID);
}

void frmMain::Get_CPU(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kProcessor, machine, confID);
}

void frmMain::Get_DEV_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kDevicesOfAll, {}, confID);
}

void frmMain::Get_DEV(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kDevices, machine, confID);
}

void frmMain::Get_DEVDISP_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kDisplaysOfAll, {}, confID);
}

void frmMain::Get_DEVDISP(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kDisplays, machine, confID);
}

void frmMain::Get_DEVMB_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kMotherboardsOfAll, {}, confID);
}

void frmMain::Get_DEVMB(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kMotherboard, machine, confID);
}

void frmMain::Get_DEVNET_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kNetworkOfAll, {}, confID);
}

void frmMain::Get_DEVNET(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kNetwork, machine, confID);
}

void frmMain::Get_DRV_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kDrivesOfAll, {}, confID);
}

void frmMain::Get_DRV(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kDrives, machine, confID);
}

void frmMain::Get_DRVDETIAL_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kDriveDetailOfAll, {}, confID);
}

void frmMain::Get_DRVDETIAL(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kDriveDetail, machine, confID);
}

void frmMain::Get_IO_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kInputOfAll, {}, confID);
}

void frmMain::Get_IO(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kInput, machine, confID);
}

void frmMain::Get_MSO_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kOfficeOfAll, {}, confID);
}

void frmMain::Get_MSO(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kOffice, machine, confID);
}

void frmMain::Get_ODB_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kODBCOfAll, {}, confID);
}

void frmMain::Get_ODB(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kODBC, machine, confID);
}

void frmMain::Get_OS_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kSystemsOfAll, {}, confID);
}

void frmMain::Get_OS(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kSystem, machine, confID);
}

void frmMain::Get_PRN_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kPrintersOfAll, {}, confID);
}

void frmMain::Get_PRN(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kPrinters, machine, confID);
}

void frmMain::Get_UNI_All(ListView& list, std::int16_t confID) {
    Fill(*this, list, Lists::kSoftwareOfAll, {}, confID);
}

void frmMain::Get_UNI(ListView& list, const std::string& machine, std::int16_t confID) {
    Fill(*this, list, Lists::kSoftware, machine, confID);
}
