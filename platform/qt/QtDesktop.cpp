#include "platform/qt/QtDesktop.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QUrl>

#include "platform/Guard.h"

namespace platform::qt {

bool QtDesktop::openFile(const std::string& path) {
    return guarded("opening a file", false, [&] {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
    });
}

void QtDesktop::showError(const std::string& title, const std::string& text) {
    guardedRun("message box", [&] {
        QMessageBox box(QMessageBox::Critical, QString::fromStdString(title),
                        QString::fromStdString(text));
        box.setTextFormat(Qt::PlainText);
        box.exec();
    });
}

} // namespace platform::qt
