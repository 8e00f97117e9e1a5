// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qtprompts.h"

#include "platform/files.h"

#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpacerItem>

namespace {

constexpr int kButtonsMask = 7;
constexpr int kIconMask = 112;

class ArrowPointer {
public:
    ArrowPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowPointer() { QApplication::restoreOverrideCursor(); }
    ArrowPointer(const ArrowPointer&) = delete;
    ArrowPointer& operator=(const ArrowPointer&) = delete;
};

QString TitleText(const std::string& title) {
    return title.empty() ? QStringLiteral("Velmora") : QString::fromStdString(title);
}

QMessageBox::Icon IconOf(int style) {
    switch (style & kIconMask) {
        case MsgBoxStyle::kCritical:
            return QMessageBox::Critical;
        case MsgBoxStyle::kQuestion:
            return QMessageBox::Question;
        case MsgBoxStyle::kExclamation:
            return QMessageBox::Warning;
        case MsgBoxStyle::kInformation:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

/// Adds a standard button with the system's own caption: the desktop's is in the desktop's language.
QPushButton* AddButton(QMessageBox& box, QMessageBox::StandardButton button, const char* caption) {
    QPushButton* const added = box.addButton(button);
    added->setText(QString::fromLatin1(caption));
    return added;
}

/// Makes a box wide enough for its title. The box itself leaves little room beside it, and desktops set
/// titles in bold, with an icon and buttons around.
void WidenForTitle(QMessageBox& box) {
    constexpr double kBold = 1.2;
    constexpr int kFrameCharacters = 16;
    auto* const grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr)
        return;
    const QFontMetrics font = box.fontMetrics();
    const int width = static_cast<int>(kBold * font.horizontalAdvance(box.windowTitle())) +
                      kFrameCharacters * font.averageCharWidth();
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

constexpr const char* kStandsAside = "standsAside";

/// A dialog that may go while it is open, since the window goes that it belongs to.
template <class Dialog>
class Asked {
public:
    explicit Asked(QWidget* parent) : mDialog(new Dialog(parent)) {}
    ~Asked() { delete mDialog.data(); }
    Asked(const Asked&) = delete;
    Asked& operator=(const Asked&) = delete;

    Dialog* operator->() const { return mDialog.data(); }
    Dialog& operator*() const { return *mDialog.data(); }
    /// Shows it until it is answered; false where it is cancelled, or gone.
    bool Show() {
        const ArrowPointer pointer;
        return mDialog->exec() == QDialog::Accepted && !mDialog.isNull();
    }

private:
    QPointer<Dialog> mDialog;
};

std::string ChosenPath(Asked<QFileDialog>& window) {
    if (!window.Show() || window->selectedFiles().isEmpty())
        return {};
    return window->selectedFiles().constFirst().toStdString();
}

} // namespace

QStringList NameFilters(const std::string& filter) {
    static const QRegularExpression kShownPatterns(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            const QString bare = pattern.trimmed();
            if (bare == QLatin1String("*.*"))
                patterns << QStringLiteral("*");
            else
                patterns << bare.toLower() << bare.toUpper();
        }
        patterns.removeDuplicates();
        QString name = parts[i];
        name.remove(kShownPatterns);
        filters << name + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
    return filters;
}

std::string WithDefaultExtension(const std::string& path, const std::string& extension) {
    const std::string name = FileNameOf(path);
    if (name.empty() || extension.empty() || name.find('.') != std::string::npos)
        return path;
    return path + "." + extension;
}

QString Breakable(const std::string& text) {
    constexpr int kLongestWord = 40;
    constexpr char16_t kZeroWidthSpace = 0x200B;
    QString lines = QString::fromStdString(text);
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QString result;
    int length = 0;
    for (const QChar character : lines) {
        length = character.isSpace() ? 0 : length + 1;
        // A pair of surrogates is one character.
        if (length > kLongestWord && !character.isLowSurrogate()) {
            result += QChar(kZeroWidthSpace);
            length = 1;
        }
        result += character;
    }
    return result;
}

void KeepDialogsOff(QWidget& window) {
    window.setProperty(kStandsAside, true);
}

QWidget* QtPrompts::Parent() {
    if (mOwner == nullptr)
        return nullptr;
    QWidget* const active = QApplication::activeWindow();
    const bool isLasting =
        (qobject_cast<QMainWindow*>(active) != nullptr || qobject_cast<QDialog*>(active) != nullptr) &&
        !active->property(kStandsAside).toBool();
    if (isLasting)
        mLast = active;
    else if (active != nullptr || mLast == nullptr || !mLast->isVisible())
        mLast = mOwner;
    return mLast;
}

MsgBoxAnswer QtPrompts::MsgBox(const std::string& text, int style, const std::string& title) {
    Asked<QMessageBox> box(Parent());
    box->setObjectName(QStringLiteral("MsgBox"));
    box->setWindowTitle(TitleText(title));
    box->setTextFormat(Qt::PlainText);
    box->setText(Breakable(text));
    box->setIcon(IconOf(style));
    if ((style & kButtonsMask) != MsgBoxStyle::kYesNo) {
        AddButton(*box, QMessageBox::Ok, "OK");
        WidenForTitle(*box);
        box.Show();
        return MsgBoxAnswer::OK;
    }
    const QPointer<QPushButton> yes = AddButton(*box, QMessageBox::Yes, "&Yes");
    QPushButton* const no = AddButton(*box, QMessageBox::No, "&No");
    box->setDefaultButton((style & MsgBoxStyle::kDefaultButton2) != 0 ? no : yes.data());
    box->setEscapeButton(no);
    WidenForTitle(*box);
    box.Show();
    return !yes.isNull() && box->clickedButton() == yes ? MsgBoxAnswer::Yes : MsgBoxAnswer::No;
}

std::string QtPrompts::InputBox(const std::string& prompt, const std::string& title,
                                const std::string& initial) {
    Asked<QInputDialog> box(Parent());
    box->setObjectName(QStringLiteral("InputBox"));
    box->setWindowTitle(TitleText(title));
    box->setLabelText(Breakable(prompt));
    box->setTextValue(QString::fromStdString(initial));
    box->setOkButtonText(QStringLiteral("OK"));
    box->setCancelButtonText(QStringLiteral("Cancel"));
    for (QLabel* const label : box->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    return box.Show() ? box->textValue().toStdString() : std::string();
}

void QtPrompts::Prepare(QFileDialog& window, const FileDialog& dialog) {
    window.setWindowTitle(TitleText(dialog.title));
    // Any name will do, and whether one is replaced is asked by who called.
    window.setFileMode(QFileDialog::AnyFile);
    window.setOption(QFileDialog::DontConfirmOverwrite);
    window.setNameFilters(NameFilters(dialog.filter));
    if (!dialog.folder.empty())
        window.setDirectory(QString::fromStdString(dialog.folder));
}

std::string QtPrompts::OpenFile(const FileDialog& dialog) {
    Asked<QFileDialog> window(Parent());
    window->setObjectName(QStringLiteral("OpenFile"));
    window->setAcceptMode(QFileDialog::AcceptOpen);
    Prepare(*window, dialog);
    const std::string path = ChosenPath(window);
    return FileExists(path) ? path : WithDefaultExtension(path, dialog.defaultExtension);
}

std::string QtPrompts::SaveFile(const FileDialog& dialog) {
    Asked<QFileDialog> window(Parent());
    window->setObjectName(QStringLiteral("SaveFile"));
    window->setAcceptMode(QFileDialog::AcceptSave);
    Prepare(*window, dialog);
    return WithDefaultExtension(ChosenPath(window), dialog.defaultExtension);
}

std::string QtPrompts::BrowseForFolder(const std::string& title, const std::string& startFolder) {
    Asked<QFileDialog> window(Parent());
    window->setObjectName(QStringLiteral("BrowseForFolder"));
    window->setWindowTitle(TitleText(title));
    window->setFileMode(QFileDialog::Directory);
    window->setOption(QFileDialog::ShowDirsOnly);
    if (!startFolder.empty())
        window->setDirectory(QString::fromStdString(startFolder));
    return ChosenPath(window);
}

void QtPrompts::Beep() {
    QApplication::beep();
}
