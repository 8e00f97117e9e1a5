// SPDX-License-Identifier: GPL-3.0-or-later
// The program's compiled help file, open for reading: its contents, its index, its pages, and the search in
// their text. What the help engine derives from the file, above all its list of words, is kept in a folder of
// this object's own that goes with it: nothing of it can be stale, and no two copies of the program meet
// there. Contents and index are read by threads of the engine, so both models are empty for a moment.
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>
#include <string>

class QHelpContentModel;
class QHelpEngine;
class QHelpIndexModel;
class QModelIndex;

struct HelpHit {
    QString title;
    QUrl page;
    /// The words around the first place found, as plain text.
    QString snippet;
};

class HelpBook final : public QObject {
    Q_OBJECT
public:
    /// Raises error 53 where there is no file, and 75 where it is no help file or a damaged one.
    explicit HelpBook(const std::string& path);
    ~HelpBook() override;
    HelpBook(const HelpBook&) = delete;
    HelpBook& operator=(const HelpBook&) = delete;

    /// The page that the contents begin with.
    static QUrl FirstPage();
    /// The bytes of a page or of what it refers to; empty where the file has none.
    QByteArray Data(const QUrl& page) const;
    QList<QUrl> Pages() const;
    /// Where the engine keeps what is its own.
    std::string Folder() const { return mFolder.path().toStdString(); }

    QHelpContentModel& Contents() const;
    QUrl PageOf(const QModelIndex& entryOfContents) const;
    QHelpIndexModel& Index() const;
    /// Empty for what is no keyword.
    QUrl PageOf(const QString& keyword) const;

    /// Looks for pages that hold all the words of `typed`, each as the beginning of a word. Found follows,
    /// unless another search is asked for before, or this one is forgotten.
    void Search(const QString& typed);
    void ForgetSearch();

signals:
    /// Hits in the order of their weight; none for a text without words.
    void Found(const QList<HelpHit>& hits);

private:
    void Open(const QString& path);
    void StartSearch();
    void EndSearch();
    void TellHits();

    QTemporaryDir mFolder;
    std::unique_ptr<QHelpEngine> mEngine;
    bool mHasWords = false;
    bool mIsSearching = false;
    /// Whether anybody still waits for what is being searched for.
    bool mIsWanted = false;
    /// Sought as soon as the list of words stands, and the search before is over: an answer does not tell
    /// which search it belongs to.
    QString mWaiting;
};
