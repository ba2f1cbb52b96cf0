// The Qt back end as a whole.
#pragma once

#include <QApplication>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/Gui.h"
#include "platform/Sound.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtFileDialog.h"
#include "platform/qt/QtFontSet.h"
#include "platform/qt/QtSignals.h"
#include "platform/qt/QtWindowHost.h"

namespace platform::qt {

/// Nothing needs initialising here; successes are counted so that callers stay balanced.
class QtComponents final : public ComponentLibrary {
public:
    [[nodiscard]] bool initialize(std::uint32_t& errorCode) override;
    void uninitialize() override;
    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count = 0;
};

/// Tells when the system's colours change.
class QtEditorApplication final : public QApplication {
public:
    using QApplication::QApplication;
    void setColorsChanged(std::function<void()> changed) { m_colorsChanged = std::move(changed); }

protected:
    bool event(QEvent* event) override;

private:
    std::function<void()> m_colorsChanged;
};

class QtGui final : public Gui {
public:
    QtGui();
    ~QtGui() override;
    QtGui(const QtGui&) = delete;
    QtGui& operator=(const QtGui&) = delete;

    WindowHost& windows() override { return m_windows; }
    EventLoop& loop() override { return m_loop; }
    FontSet& fonts() override { return m_fonts; }
    FileDialog& fileDialog() override { return m_fileDialog; }
    Desktop& desktop() override { return m_desktop; }
    ComponentLibrary& components() override { return m_components; }
    SoundSystem& sound() override { return nativeSound(); }
    [[nodiscard]] bool isEnding() const override { return m_loop.isEnding(); }

private:
    void end();

    QtEditorApplication m_application;
    QtEventLoop m_loop;
    QtFontSet m_fonts;
    QtWindowHost m_windows;
    QtFileDialog m_fileDialog;
    QtDesktop m_desktop;
    QtComponents m_components;
    QtSignals m_signals;
};

} // namespace platform::qt
