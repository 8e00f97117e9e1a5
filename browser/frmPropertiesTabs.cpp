// SPDX-License-Identifier: GPL-3.0-or-later
// How the tabs of a machine's properties are filled from the database.
#include "browser/Images.h"
#include "browser/ListFiller.h"
#include "browser/ListView.h"
#include "browser/ValueBox.h"
#include "browser/frmProperties.h"
#include "core/Controls.h"
#include "core/Globals.h"
#include "platform/errors.h"
#include "platform/prompts.h"

#include <QTabWidget>
#include <QTreeWidget>

#include <memory>
#include <optional>
#include <span>

using Controls::Shown;

namespace {

constexpr int kKeyRole = Qt::UserRole;
constexpr std::string_view kChild = "?CHILD";

/// Positions in DeviceData.
constexpr std::size_t kDeviceID = 0;
constexpr std::size_t kCategory = 3;
constexpr std::size_t kProblem = 4;
constexpr std::size_t kDeviceName = 5;

std::shared_ptr<ADODB::Recordset> Open(const ListQuery& query, const std::string& name, std::int16_t confID) {
    gRecordset = std::make_shared<ADODB::Recordset>();
    gRecordset->Open(StatementText(query, name, confID), gConnection);
    return gRecordset;
}

/// Shows the record's values in the boxes; without a record they stay as they are.
void ShowRecord(ADODB::Recordset& record, std::span<const PropertyBox> definitions,
                std::span<ValueBox* const> boxes) {
    std::string buffer;
    if (record.EndOfFile())
        return;
    for (std::size_t index = 0; index < definitions.size(); ++index) {
        const PropertyBox& box = definitions[index];
        boxes[index]->Show(Shown(DisplayText(box.rule, record.Fields().Item(box.position), buffer)));
    }
}

QTreeWidgetItem* NewNode(const std::string& key, std::string_view text, Image image) {
    auto* const node = new QTreeWidgetItem;
    node->setText(0, Shown(text));
    node->setIcon(0, TreeIcon(image));
    node->setData(0, kKeyRole, QString::fromStdString(key));
    return node;
}

} // namespace

std::string frmProperties::Key(const QTreeWidgetItem& node) {
    return node.data(0, kKeyRole).toString().toStdString();
}

void frmProperties::tabInfo_Click(int tab) {
    const auto index = static_cast<std::size_t>(tab);
    if (index >= mTabLoaded.size())
        Raise(Errors::kOutOfRange);
    if (mTabLoaded.at(index))
        return;
    LoadTab(index);
    mTabLoaded.at(index) = true;
}

void frmProperties::LoadTab(std::size_t tab) {
    if (Properties::kPages.at(tab).onFailure == OnFailure::EndProgram)
        return FillTab(tab);
    try {
        FillTab(tab);
    } catch (const RunTimeError&) {
        // The boxes that were not reached keep telling that nothing is known.
        return;
    }
}

void frmProperties::FillTab(std::size_t tab) {
    const PropertyPage& page = Properties::kPages.at(tab);
    const TabControls& controls = mControls.at(tab);
    if (tab == Properties::kDevicesPage)
        FillDeviceTree();
    else if (controls.list != nullptr)
        FillList(page, *controls.list);
    else if (!page.queries.empty())
        FillBoxes(page, controls.boxes);
    else // No page is without a way to be filled now; one that is added without any says so.
        mPrompts.MsgBox("Tab Not Done yet!", MsgBoxStyle::kOKOnly, "");
}

void frmProperties::FillBoxes(const PropertyPage& page, const std::vector<ValueBox*>& boxes) {
    std::size_t first = 0;
    for (const PropertyQuery& query : page.queries) {
        const std::shared_ptr<ADODB::Recordset> record = Open(query.query, mComputerName, mConfID);
        ShowRecord(*record, page.boxes.subspan(first, query.boxes), std::span(boxes).subspan(first));
        record->Close();
        first += query.boxes;
    }
}

void frmProperties::FillList(const PropertyPage& page, ListView& list) {
    const ListFill fill(list);
    list.Hint("None is known in this configuration.");
    ListFiller(list, gConnection, gRecordset).Fill(*page.list, mComputerName, mConfID);
}

void frmProperties::FillDeviceTree() {
    const std::shared_ptr<ADODB::Recordset> devices = Open(Properties::kDevices, mComputerName, mConfID);
    QList<QTreeWidgetItem*> categories;
    // Nodes are shown together: one by one a long tree would be laid out at each.
    const auto show = [&] { tvDevices->addTopLevelItems(categories); };
    std::optional<std::string> category;
    std::string buffer;
    try {
        for (; !devices->EndOfFile(); devices->MoveNext()) {
            const ADODB::FieldList& device = devices->Fields();
            const std::string id(device.Item(kDeviceID).Text());
            // A category that is Null is one without a name, too.
            if (const std::string_view name = device.Item(kCategory).Text(); name != category) {
                category = name;
                categories += NewNode(id, name.empty() ? "n/a" : name, Image::OS);
            }
            const bool hasProblem = DisplayText(Rule::ProblemOfOne, device.Item(kProblem), buffer) == "Yes";
            QTreeWidgetItem* const node =
                NewNode(id + std::string(kChild), DisplayText(Rule::Text, device.Item(kDeviceName), buffer),
                        hasProblem ? Image::Pr_Yes : Image::Pr_No);
            // What the picture tells must be heard, too.
            if (hasProblem)
                node->setData(0, Qt::AccessibleDescriptionRole, "Has a problem");
            categories.back()->addChild(node);
        }
    } catch (const RunTimeError&) {
        show();
        throw;
    }
    show();
    devices->Close();
}

void frmProperties::tvDevices_NodeClick(const QTreeWidgetItem* node) {
    const std::string key = node != nullptr ? Key(*node) : std::string();
    const std::size_t end = key.find(kChild);
    if (end == std::string::npos)
        return;
    const std::shared_ptr<ADODB::Recordset> device = Open(Properties::kDevice, key.substr(0, end), mConfID);
    ShowRecord(*device, Properties::kPages.at(Properties::kDevicesPage).boxes,
               mControls.at(Properties::kDevicesPage).boxes);
    device->Close();
}
