// SPDX-License-Identifier: GPL-3.0-or-later
// The help window: contents, index and search on the left, the page on the right. It stands beside the main
// window and can be used beside any dialog, is made when help is first asked for, destroys itself when it is
// closed, and remembers nothing.
#pragma once

#include "browser/HelpBook.h"

#include <QMainWindow>

#include <memory>
#include <string>

class Desktop;
class HelpPage;
class QLabel;
class QLineEdit;
class QListView;
class QListWidget;
class QTabWidget;
class QTreeView;

class frmHelp final : public QMainWindow {
    Q_OBJECT
public:
    /// `desktop` must outlive the window.
    frmHelp(std::unique_ptr<HelpBook> book, Desktop& desktop);
    ~frmHelp() override;

    /// Comes forward with the contents and the page that they begin with.
    void ShowContents();
    /// Comes forward with a page, "import.html#window", ready to be read.
    void ShowTopic(const std::string& page);
    /// Comes forward with an empty search.
    void ShowSearch();

    const HelpBook& Book() const { return *mBook; }

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildToolBar();
    QWidget* BuildContents();
    QWidget* BuildIndex();
    QWidget* BuildSearch();
    QWidget* BuildPage(Desktop& desktop);
    void AddKey(const char* key, void (frmHelp::*slot)());

    void ComeForward(int tab);
    void JoinModalWindow();
    void MarkInContents(const QUrl& place);
    void ShowKeyword(const QModelIndex& entry);
    void StartSearch();
    void ShowHits(const QList<HelpHit>& hits);
    void ShowHit(int row);
    void OpenFind();
    void CloseFind();
    /// Closes the find line, or the window where there is none.
    void Leave();
    void FindNext();
    void FindPrevious();
    void FindInPage(bool isBackward);
    void ChangePane();
    void Unload();

    std::unique_ptr<HelpBook> mBook;
    /// While the contents follow the page, and not the page the contents.
    bool mIsMarking = false;
    HelpPage* txtPage = nullptr;
    QTabWidget* tabHelp = nullptr;
    QTreeView* tvContents = nullptr;
    QLineEdit* txtIndex = nullptr;
    QListView* lstIndex = nullptr;
    QLineEdit* txtSearch = nullptr;
    QLabel* lblHits = nullptr;
    QListWidget* lstHits = nullptr;
    QWidget* mFindLine = nullptr;
    QLineEdit* txtFind = nullptr;
    QLabel* lblFind = nullptr;
};
