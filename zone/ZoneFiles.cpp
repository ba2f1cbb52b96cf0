// Loading and saving the two zone files of a video.

#include <algorithm>
#include <new>
#include <string_view>

#include <tinyxml2.h>

#include "core/Log.h"
#include "core/Paths.h"
#include "core/StandardError.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "zone/ChunkReader.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneXml.h"

namespace zone {
namespace {

constexpr const char* kInfoEnding = "-ZoneInfo.xml";
constexpr const char* kBinaryEnding = "-ZoneInfo.bin";
/// Tens of thousands of zones; the parser needs fifty times the size of a file of empty elements.
constexpr std::size_t kMaxInfoBytes = std::size_t{4} * 1024 * 1024;

bool failLoad(const char* reason) {
    core::Log::get()->Error("%s", reason);
    return false;
}

} // namespace

std::string firstText(const tinyxml2::XMLElement& element) {
    const tinyxml2::XMLNode* child = element.FirstChild();
    return child && child->ToText() ? child->Value() : std::string();
}

std::shared_ptr<ZoneManager> ZoneManager::createEmpty() {
    try {
        return std::make_shared<ZoneManager>();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::shared_ptr<ZoneManager> ZoneManager::create(const std::string& basePath, int frameCount,
                                                 bool loadBinary) {
    try {
        std::shared_ptr<ZoneManager> manager = createEmpty();
        if (!manager || basePath.empty()) {
            return nullptr;
        }
        manager->frameCount = frameCount;
        if (!manager->loadInfo(basePath) || (loadBinary && !manager->loadBinary(basePath))) {
            return nullptr;
        }
        // A zone that only the information file names could not be edited without frames.
        for (const std::shared_ptr<Zone>& zone : manager->m_zones) {
            zone->fillTo(frameCount);
        }
        return manager;
    } catch (const std::bad_alloc&) {
        failLoad("Unable to read zone binary");
        return nullptr;
    }
}

bool ZoneManager::loadInfo(const std::string& basePath) {
    tinyxml2::XMLDocument document;
    const std::optional<std::string> text =
        core::readWholeFile(basePath + kInfoEnding, kMaxInfoBytes);
    if (!text || document.Parse(text->data(), text->size()) != tinyxml2::XML_SUCCESS) {
        return true;
    }
    const tinyxml2::XMLNode* root = document.FirstChild();
    if (!root) {
        return failLoad("Zone info file is corrupt");
    }
    for (const auto* child = root->FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        const std::string_view name = child->Name();
        if (name == "VideoWidth") {
            videoWidth = core::convertStringToInt(firstText(*child));
        } else if (name == "VideoHeight") {
            videoHeight = core::convertStringToInt(firstText(*child));
        } else if (name == "Zone") {
            addZone(Zone::createFromXml(*child));
        }
    }
    return true;
}

bool ZoneManager::loadBinary(const std::string& basePath) {
    core::File file;
    const std::int64_t size =
        file.open(basePath + kBinaryEnding, "rb") ? file.size() : std::int64_t{0};
    ChunkReader reader(file, static_cast<std::uint64_t>(std::max<std::int64_t>(size, 0)));
    if (size <= 0 || !readChunks(reader)) {
        return failLoad("Unable to load zone binary");
    }
    return size >= static_cast<std::int64_t>(ChunkReader::kHeaderSize) ||
           failLoad("Unable to read zone binary");
}

bool ZoneManager::readChunks(ChunkReader& reader) {
    while (reader.next()) {
        if (reader.tag() != kZoneTag) {
            reader.skip();
        } else if (reader.readBody() &&
                   nextZone().read(reader.body(), reader.statedSize(), frameCount).endsOneEarly) {
            reader.giveBackLast();
        }
    }
    return reader.good();
}

Zone& ZoneManager::nextZone() {
    ++currentZone;
    if (currentZone >= zoneCount()) {
        addZone(Zone::create(0)); // no frames: the record brings them
    }
    return *m_zones[static_cast<std::size_t>(currentZone)];
}

bool ZoneManager::save(const std::string& videoPath) {
    return saveAs(core::withoutExtension(videoPath));
}

bool ZoneManager::saveAs(const std::string& basePath) {
    constexpr const char* kInfoFailed = "Unable to save zone info file";
    m_lastSaveFailure.clear();
    core::SafeSave info;
    core::SafeSave binary;
    if (!info.open(basePath + kInfoEnding, "wt") || !writeInfo(info.file()) || !info.prepare()) {
        return failSave(kInfoFailed, info.failure());
    }
    const bool isOpen = binary.open(basePath + kBinaryEnding, "wb");
    const bool isWritten = isOpen && writeZones(binary.file()) && binary.prepare();
    // Both files are on the disk by now, so that the pair changes in two renames.
    if (!info.commit()) {
        return failSave(kInfoFailed, info.failure());
    }
    if (!isOpen) {
        return failSave("Unable to save zone binary file", binary.failure());
    }
    if (!isWritten || !binary.commit()) {
        m_lastSaveFailure = binary.failure();
        if (m_lastSaveFailure.empty()) { // no step of the file failed, so it reports nothing
            m_lastSaveFailure = basePath + kBinaryEnding + ": zones cannot be stored";
            core::tellStandardError("Not saved: " + m_lastSaveFailure);
        }
    }
    return true;
}

bool ZoneManager::failSave(const char* message, const std::string& reason) {
    core::Log::get()->Error("%s", message);
    m_lastSaveFailure = reason.empty() ? message : reason;
    return false;
}

bool ZoneManager::writeInfo(core::File& file) const {
    const auto number = [](const char* tag, int value) {
        return std::string("\t<") + tag + ">" + std::to_string(value) + "</" + tag + ">\n";
    };
    bool good = file.writeString("<ZoneInfo>\n") &&
                file.writeString(number("VideoWidth", videoWidth)) &&
                file.writeString(number("VideoHeight", videoHeight));
    for (const std::shared_ptr<Zone>& zone : m_zones) {
        good = good && file.writeString("\t<Zone>\n") &&
               file.writeString("\t\t<Name>" + zone->name() + "</Name>\n") &&
               file.writeString("\t</Zone>\n");
    }
    return good && file.writeString("</ZoneInfo>\n");
}

bool ZoneManager::writeZones(core::File& file) const {
    return std::all_of(m_zones.begin(), m_zones.end(),
                       [&](const std::shared_ptr<Zone>& zone) { return zone->write(file); });
}

} // namespace zone
