#include "platform/qt/QtFileDialog.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QWindow>
#include <string>

#include "platform/Guard.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtWindow.h"

namespace platform::qt {

namespace {

QString nameFilter(const OpenFilesRequest& request) {
    const QString patterns = QString::fromStdString(request.filterPatterns).replace(u';', u' ');
    return QStringLiteral("%1 (%2)").arg(QString::fromStdString(request.filterName), patterns);
}

/// The chosen files in the folder of the first one: the user can type a path to another folder, but
/// the result has only one.
std::optional<OpenFilesResult> resultOf(const QStringList& files) {
    OpenFilesResult result;
    for (const QString& file : files) {
        const QFileInfo info(file);
        const QString path = info.absolutePath();
        const std::string folder = (path.endsWith(u'/') ? path : path + u'/').toStdString();
        if (result.names.empty()) {
            result.folder = folder;
        }
        if (folder == result.folder) {
            result.names.push_back(info.fileName().toStdString());
        }
    }
    if (result.names.empty()) {
        return std::nullopt;
    }
    return result;
}

/// Returns the keyboard focus to a dialog after its message box. A window manager does that;
/// without one, no window has the focus then, and no key closes the dialog.
class KeyboardReturn final : public QObject {
public:
    explicit KeyboardReturn(QFileDialog& dialog) : m_dialog(dialog) {
        dialog.windowHandle()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* /*window*/, QEvent* event) override {
        if (event->type() == QEvent::WindowUnblocked) { // the box is not closed yet
            QMetaObject::invokeMethod(
                &m_dialog, [this] { m_dialog.activateWindow(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    QFileDialog& m_dialog;
};

/// Qt's own words in a language ("de"), where Qt's translations are installed.
class Words {
public:
    explicit Words(const std::string& language) {
        if (m_words.load(QLocale(QString::fromStdString(language)), QStringLiteral("qtbase"),
                         QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
            QCoreApplication::installTranslator(&m_words);
        }
    }

private:
    QTranslator m_words; ///< leaves the application as it ends
};

/// What is chosen in it; empty when it is cancelled.
template <class Request>
QStringList choose(QFileDialog& dialog, const Request& request) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setWindowTitle(QString::fromStdString(request.title));
    // Scene folders are kept with either separator.
    dialog.setDirectory(QString::fromStdString(request.initialFolder).replace(u'\\', u'/'));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.winId(); // makes the native window, which can then be tied to its owner
    auto* owner = static_cast<QtWindow*>(request.owner);
    if (owner != nullptr) {
        dialog.windowHandle()->setTransientParent(&owner->surface());
    }
    const KeyboardReturn keyboardReturn(dialog);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (owner != nullptr) {
        owner->activate(); // for the same reason
    }
    return accepted ? dialog.selectedFiles() : QStringList();
}

std::optional<OpenFilesResult> ask(const OpenFilesRequest& request) {
    const Words words(request.language);
    QFileDialog dialog;
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilter(nameFilter(request));
    return resultOf(choose(dialog, request));
}

std::optional<std::string> ask(const FolderRequest& request) {
    const Words words(request.language);
    QFileDialog dialog;
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const QStringList chosen = choose(dialog, request);
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen.front().toStdString());
}

} // namespace

std::optional<OpenFilesResult> QtFileDialog::openFiles(const OpenFilesRequest& request) {
    return guarded("file dialog", std::optional<OpenFilesResult>(), [&] { return ask(request); });
}

std::optional<std::string> QtFileDialog::chooseFolder(const FolderRequest& request) {
    return guarded("folder dialog", std::optional<std::string>(), [&] { return ask(request); });
}

} // namespace platform::qt
