#include "ui/importing/ConverterChoice.h"

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Texts.h"
#include "platform/FileDialog.h"
#include "ui/FileChoice.h"
#include "ui/importing/SceneImports.h"

namespace ui {

bool chooseConverter(const WindowContext& context, platform::NativeWindow* owner,
                     Companions& beside) {
    platform::OpenFilesRequest request;
    request.owner = owner;
    request.title = core::trStored("Choose the Converter"_tr);
    request.filterName = "ffmpeg";
    request.filterPatterns = "ffmpeg;ffmpeg.exe";
    const auto& settings = context.services.editorSettings;
    const Companions::Pause pause(beside);
    const auto chosen = chooseFiles(context.gui, settings.get(), "converterFolder", request);
    if (!chosen || !settings) {
        return false;
    }
    // A failed write is in the log; the choice counts until the program ends.
    settings->set(kConverterKey, chosen->folder + chosen->names.front());
    return true;
}

} // namespace ui
