// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/HelpBook.h"

#include "platform/errors.h"
#include "platform/files.h"

#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QTextDocumentFragment>

#include <algorithm>
#include <utility>

namespace {

/// As the project of the help file names them.
constexpr const char* kNamespace = "velmora.help";
constexpr const char* kFirstPage = "qthelp://velmora.help/help/index.html";

/// The engine's query for all words of `typed`. Each is quoted, since signs and words such as AND have a
/// meaning in the query's language, and is the beginning of what is sought.
QString Query(const QString& typed) {
    QStringList words;
    for (QString word : typed.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        word.remove(QLatin1Char('"'));
        const auto isPartOfWord = [](QChar character) { return character.isLetterOrNumber(); };
        if (std::any_of(word.begin(), word.end(), isPartOfWord))
            words << QLatin1Char('"') + word + QStringLiteral("\"*");
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

HelpBook::HelpBook(const std::string& path) {
    if (!FileExists(path))
        Raise(Errors::kFileNotFound, path);
    if (!mFolder.isValid())
        Raise(Errors::kPathAccess, mFolder.path().toStdString());
    mEngine = std::make_unique<QHelpEngine>(mFolder.filePath(QStringLiteral("help.qhc")));
    mEngine->setReadOnly(false);
    Open(QString::fromStdString(path));
}

HelpBook::~HelpBook() = default;

void HelpBook::Open(const QString& path) {
    const auto fail = [&](const std::string& reason) {
        throw RunTimeError(Errors::kPathAccess, "The help file can not be read: " + path.toStdString() +
                                                    "\n\n" + reason + "\n\nPlease install it again.");
    };
    if (!mEngine->setupData() || !mEngine->registerDocumentation(path))
        fail(mEngine->error().toStdString());
    if (!mEngine->registeredDocumentations().contains(QLatin1String(kNamespace)) ||
        Data(FirstPage()).isEmpty())
        fail("It does not hold the pages of this program, or it is damaged.");

    QHelpSearchEngine* const search = mEngine->searchEngine();
    connect(search, &QHelpSearchEngine::indexingFinished, this, [this] {
        mHasWords = true;
        StartSearch();
    });
    connect(search, &QHelpSearchEngine::searchingFinished, this, &HelpBook::EndSearch);
    // Now that the file is known, its contents, index and words are read, as soon as events are.
    if (!mEngine->setupData())
        fail(mEngine->error().toStdString());
}

QUrl HelpBook::FirstPage() {
    return {QLatin1String(kFirstPage)};
}

QByteArray HelpBook::Data(const QUrl& page) const {
    return mEngine->fileData(page);
}

QList<QUrl> HelpBook::Pages() const {
    return mEngine->files(QLatin1String(kNamespace), QString(), QStringLiteral("html"));
}

QHelpContentModel& HelpBook::Contents() const {
    return *mEngine->contentModel();
}

QUrl HelpBook::PageOf(const QModelIndex& entryOfContents) const {
    const QHelpContentItem* const entry = mEngine->contentModel()->contentItemAt(entryOfContents);
    return entry == nullptr ? QUrl() : entry->url();
}

QHelpIndexModel& HelpBook::Index() const {
    return *mEngine->indexModel();
}

QUrl HelpBook::PageOf(const QString& keyword) const {
    const QList<QHelpLink> links = mEngine->documentsForKeyword(keyword);
    return links.isEmpty() ? QUrl() : links.constFirst().url;
}

void HelpBook::Search(const QString& typed) {
    mWaiting = Query(typed);
    mIsWanted = !mWaiting.isEmpty();
    if (mIsWanted)
        StartSearch();
    else
        emit Found({});
}

void HelpBook::ForgetSearch() {
    mWaiting.clear();
    mIsWanted = false;
}

void HelpBook::StartSearch() {
    if (!mHasWords || mIsSearching || mWaiting.isEmpty())
        return;
    mIsSearching = true;
    mEngine->searchEngine()->search(std::exchange(mWaiting, QString()));
}

void HelpBook::EndSearch() {
    mIsSearching = false;
    if (!mWaiting.isEmpty())
        StartSearch();
    else if (std::exchange(mIsWanted, false))
        TellHits();
}

void HelpBook::TellHits() {
    const QHelpSearchEngine& search = *mEngine->searchEngine();
    QList<HelpHit> hits;
    for (const QHelpSearchResult& result : search.searchResults(0, search.searchResultCount())) {
        QString snippet = QTextDocumentFragment::fromHtml(result.snippet()).toPlainText().simplified();
        // A page begins with its title, which stands over the snippet already.
        if (snippet.startsWith(result.title()))
            snippet = snippet.mid(result.title().size()).trimmed();
        hits.append({result.title(), result.url(), snippet});
    }
    emit Found(hits);
}
