// SPDX-License-Identifier: GPL-3.0-or-later
// A list in four views over one set of rows: large icons, small icons, list and details. The views share
// the rows and the selection. Widths are twips, and are shown by the font in use, see FontScale. Whoever
// fills it holds a ListFill, at whose end the rows appear at once.
#pragma once

#include "browser/ListModel.h"
#include "browser/ListSink.h"

#include <QString>
#include <QWidget>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class DetailsView;
class FilterLine;
class IconsView;
class ListSelection;
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
    /// Forgets how the list was sorted and what was sought in it, too: the next one stands in its own order.
    void ClearColumns();

    const ListModel& Items() const { return mModel; }
    bool IsSelected(std::size_t row) const;
    bool HasSelection() const;
    /// In the order of the list.
    std::vector<std::size_t> SelectedRows() const;
    /// The view on display; the other one is hidden.
    QAbstractItemView& CurrentView() const;
    /// The row that bears the focus, or -1.
    int SelectedItem() const;

    /// The column, from 0, and the order of the last sort; at first the first column's ascending, though
    /// the rows stand as they were added until Sorted.
    int SortKey() const { return mSortKey; }
    Qt::SortOrder SortOrder() const { return mSortOrder; }
    bool Sorted() const { return mSorted; }
    /// Sorts as a click on the caption of `column` does: the column of the last sort turns its order round,
    /// another one begins ascending.
    void SortBy(int column, const Progress& progress = {});
    /// Leaves the rows that hold `text`; with an empty one all are back. The selected rows and the current
    /// one stay so: those that are left as they are, the others once they are back.
    void Filter(const QString& text, const Progress& progress = {});
    /// How many rows the filter leaves out.
    std::size_t HiddenRows() const { return mModel.AllRows() - mModel.Rows(); }
    /// Opens the line in which a text is typed that the rows must hold.
    void OpenFilter();

    /// The name for assistive technology.
    void Name(const QString& name);
    /// Hands the events of the views and of their viewports to the filter of `observer` first.
    void Watch(QObject& observer);
    /// Drawn in the middle of a list without rows.
    void Hint(const QString& text);

signals:
    /// A row was double-clicked, or Enter was pressed on it.
    void DblClick();
    /// The caption of a column, from 0, was clicked. Ctrl with a digit stands for one of the first ten, Ctrl
    /// with the arrow keys, in details, for the neighbour of the one last sorted by.
    void ColumnClick(int column);
    /// The text that the rows must hold was changed.
    void FilterTyped(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class ListFill;
    void Publish();
    bool HandleKey(int key, Qt::KeyboardModifiers modifiers);
    bool HandleColumnKey(int key, Qt::KeyboardModifiers modifiers);
    void Widen(int column, int steps);
    int ColumnOfKey(int key) const;
    int FittedWidth(int column) const;
    void FitColumns();
    void CloseFilter();
    void ShowHint();
    void GoToRows();

    ListModel mModel;
    ListStyle mMode = ListStyle::Details;
    QStackedWidget* mStack;
    DetailsView* mDetails;
    IconsView* mIcons;
    ListSelection* mSelection;
    FilterLine* mFilterLine;
    /// Of each column, the width it was last given other than by hand, pixels.
    std::vector<int> mFitted;
    QString mFilter;
    QString mHint;
    int mSortKey = 0;
    Qt::SortOrder mSortOrder = Qt::AscendingOrder;
    bool mSorted = false;
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
