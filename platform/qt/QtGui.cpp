#include "platform/qt/QtGui.h"

#include <QSessionManager>
#include <QWidget>
#include <clocale>
#include <memory>

#include "platform/Guard.h"
#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtDisplay.h"

namespace platform {

namespace {

// Qt keeps references to both for as long as it runs.
int argumentCount = 1;
char programName[] = "quorvel";
char* arguments[] = {programName, nullptr};

} // namespace

namespace qt {

bool QtComponents::initialize(std::uint32_t& errorCode) {
    errorCode = 0;
    ++m_count;
    return true;
}

void QtComponents::uninitialize() {
    --m_count;
}

bool QtEditorApplication::event(QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange && m_colorsChanged) {
        guardedRun("change of colours", m_colorsChanged);
    }
    return QApplication::event(event);
}

QtGui::QtGui()
    : m_application(argumentCount, arguments), m_windows(m_fonts), m_signals([this] { end(); }) {
    // The application took the user's number format; our files have points in their numbers.
    std::setlocale(LC_NUMERIC, "C");
    m_application.setColorsChanged([this] { m_windows.systemColorsChanged(); });
    QtAccessibleNodes::install();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName(QStringLiteral("quorvel"));
    QObject::connect(&m_application, &QGuiApplication::commitDataRequest, &m_application,
                     [this](QSessionManager& session) {
                         session.setRestartHint(QSessionManager::RestartNever);
                         end();
                     });
}

QtGui::~QtGui() {
    m_application.setColorsChanged({});
    QtAccessibleNodes::forgetAll();
    // Surfaces whose windows are gone must not outlive the application.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtGui::end() {
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        dialog->close();
    }
    m_loop.endAll();
}

} // namespace qt

std::unique_ptr<Gui> createGui() {
    if (!qt::isDisplayAvailable()) {
        return nullptr;
    }
    return guarded("start of the window system", std::unique_ptr<Gui>(),
                   [] { return std::unique_ptr<Gui>(std::make_unique<qt::QtGui>()); });
}

} // namespace platform
