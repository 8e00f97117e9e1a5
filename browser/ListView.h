// SPDX-License-Identifier: GPL-3.0-or-later
// A list in four views over one set of rows: large icons, small icons, list and details. The views share
// the rows and the selection. Widths are twips. Whoever fills it holds a ListFill, at whose end the rows
// appear at once.
#pragma once

#include "browser/ListModel.h"
#include "browser/ListSink.h"

#include <QString>
#include <QWidget>

#include <cstdint>
#include <string>
#include <string_view>

class DetailsView;
class IconsView;
class QAbstractItemView;
class QStackedWidget;

enum class ListStyle : std::uint8_t { LargeIcons = 0, SmallIcons = 1, List = 2, Details = 3 };

class ListView final : public QWidget, public ListSink {
    Q_OBJECT
public:
    explicit ListView(QWidget* parent = nullptr);

    ListStyle View() const { return mMode; }
    void View(ListStyle mode);
    /// Whether the icons flow anew when the window's size changes, or stay where they are.
    void Arrange(bool automatic);

    void AddColumn(std::string_view caption, int width) override;
    void AddRow(std::string_view key, std::string_view text, Image icon) override;
    void AddCountedRow(std::string_view machine, std::string_view keyEnd, std::string_view text,
                       Image icon) override;
    void SetSubItem(int column, std::string_view text) override;
    void ClearItems();
    void ClearColumns();

    const ListModel& Items() const { return mModel; }
    bool IsSelected(std::size_t row) const;
    /// The view on display; the other one is hidden.
    QAbstractItemView& CurrentView() const;
    /// The row that bears the focus, or -1.
    int SelectedItem() const;

    /// The name for assistive technology.
    void Name(const QString& name);
    /// Hands the events of the views and of their viewports to the filter of `observer` first.
    void Watch(QObject& observer);
    /// Drawn in the middle of a list without rows.
    void Hint(const QString& text);

private:
    friend class ListFill;
    void Publish();

    ListModel mModel;
    ListStyle mMode = ListStyle::Details;
    QStackedWidget* mStack;
    DetailsView* mDetails;
    IconsView* mIcons;
};

/// The time during which a list is filled; its end shows the rows, those before a failure as well.
class ListFill {
public:
    explicit ListFill(ListView& list) : mList(list) {}
    ~ListFill() { mList.Publish(); }
    ListFill(const ListFill&) = delete;
    ListFill& operator=(const ListFill&) = delete;

private:
    ListView& mList;
};
