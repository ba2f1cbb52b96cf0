#include "platform/qt/QtFileDialog.h"

#include <QFileDialog>
#include <QFileInfo>

#include "platform/Guard.h"
#include "platform/qt/QtWindow.h"

namespace platform::qt {

namespace {

QString nameFilter(const OpenFilesRequest& request) {
    const QString patterns = QString::fromStdString(request.filterPatterns).replace(u';', u' ');
    return QStringLiteral("%1 (%2)").arg(QString::fromStdString(request.filterName), patterns);
}

/// The chosen files of the first one's folder: a person can type a path of another folder, which
/// the result has no room for.
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

std::optional<OpenFilesResult> ask(const OpenFilesRequest& request) {
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setWindowTitle(QString::fromStdString(request.title));
    dialog.setNameFilter(nameFilter(request));
    // Scene folders are kept with either separator.
    dialog.setDirectory(QString::fromStdString(request.initialFolder).replace(u'\\', u'/'));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.winId(); // makes the native window, which can then be tied to its owner
    if (const auto* owner = static_cast<const QtWindow*>(request.owner)) {
        dialog.windowHandle()->setTransientParent(&owner->surface());
    }
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return resultOf(dialog.selectedFiles());
}

} // namespace

std::optional<OpenFilesResult> QtFileDialog::openFiles(const OpenFilesRequest& request) {
    return guarded("file dialog", std::optional<OpenFilesResult>(), [&] { return ask(request); });
}

} // namespace platform::qt
