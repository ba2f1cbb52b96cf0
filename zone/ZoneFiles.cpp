// Loading and saving the two zone files of a video.

#include <algorithm>
#include <cstddef>
#include <new>
#include <string_view>

#include <tinyxml2.h>

#include "core/FileError.h"
#include "core/Log.h"
#include "core/MakeOrNull.h"
#include "core/Paths.h"
#include "core/Reason.h"
#include "core/ReplacedFiles.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/WholeFile.h"
#include "core/XmlTags.h"
#include "platform/FileSystem.h"
#include "zone/ChunkReader.h"
#include "zone/LoadReport.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneXml.h"

namespace zone {
namespace {

constexpr const char* kInfoEnding = "-ZoneInfo.xml";
constexpr const char* kBinaryEnding = "-ZoneInfo.bin";
/// Tens of thousands of zones; the parser needs fifty times the size of a file of empty elements.
constexpr std::size_t kMaxInfoBytes = std::size_t{4} * 1024 * 1024;

constexpr core::Text kInfoFailed = "Unable to save zone info file"_tr;

bool exists(const std::string& path) {
    return core::services().fileSystem->info(path).has_value();
}

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
    return core::makeOrNull<ZoneManager>();
}

std::shared_ptr<ZoneManager> ZoneManager::create(const std::string& basePath, int frameCount,
                                                 bool loadBinary, std::optional<Scale> scale) {
    LoadReport report;
    return load(basePath, frameCount, loadBinary, scale, report);
}

std::shared_ptr<ZoneManager> ZoneManager::createForEditing(const std::string& basePath,
                                                           int frameCount,
                                                           std::optional<Scale> scale) {
    LoadReport report;
    std::shared_ptr<ZoneManager> manager = load(basePath, frameCount, true, scale, report);
    if (!manager) {
        manager = createEmpty();
        if (manager) {
            manager->frameCount = frameCount;
            manager->scale = scale;
        }
    }
    if (manager && report.problem != LoadProblem::none) {
        manager->m_loadReport = report;
        manager->m_damagedBase = basePath;
    }
    return manager;
}

std::shared_ptr<ZoneManager> ZoneManager::load(const std::string& basePath, int frameCount,
                                               bool loadBinary, std::optional<Scale> scale,
                                               LoadReport& report) {
    std::shared_ptr<ZoneManager> manager = createEmpty();
    if (!manager || basePath.empty()) {
        return nullptr;
    }
    try {
        manager->frameCount = frameCount;
        manager->scale = scale;
        const bool good =
            manager->loadInfo(basePath) && (!loadBinary || manager->loadBinary(basePath));
        report = manager->m_loadReport;
        if (!good) {
            return nullptr;
        }
        // A zone that only the information file names could not be edited without frames.
        for (const std::shared_ptr<Zone>& zone : manager->m_zones) {
            zone->fillTo(frameCount);
        }
        return manager;
    } catch (const std::bad_alloc&) {
        failLoad("Unable to read zone binary");
        report = {LoadProblem::binaryUnreadable, manager->m_loadReport.zones};
        return nullptr;
    }
}

bool ZoneManager::loadInfo(const std::string& basePath) {
    tinyxml2::XMLDocument document;
    const std::optional<std::string> text =
        core::readWholeFile(basePath + kInfoEnding, kMaxInfoBytes);
    if (!text || !core::areTagsModest(*text) ||
        document.Parse(text->data(), text->size()) != tinyxml2::XML_SUCCESS) {
        if (exists(basePath + kInfoEnding)) {
            m_loadReport.problem = LoadProblem::listDamaged;
        }
        return true;
    }
    const tinyxml2::XMLNode* root = document.FirstChild();
    if (!root) {
        m_loadReport.problem = LoadProblem::listDamaged;
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
    m_loadReport.zones = zoneCount();
    return true;
}

bool ZoneManager::loadBinary(const std::string& basePath) {
    const std::string path = basePath + kBinaryEnding;
    core::File file;
    const bool isOpen = file.open(path, "rb");
    const std::int64_t size = isOpen ? file.size() : std::int64_t{0};
    ChunkReader reader(file, static_cast<std::uint64_t>(std::max<std::int64_t>(size, 0)));
    // A list without zones has nothing that a missing or empty file could have lost.
    const bool isEmpty = isOpen ? size == 0 : !exists(path);
    LoadReport failed = m_loadReport;
    if (!isEmpty) {
        failed.problem = LoadProblem::binaryUnreadable;
    } else if (failed.zones > 0) {
        failed.problem = isOpen ? LoadProblem::binaryDamaged : LoadProblem::binaryMissing;
    }
    if (size <= 0 || !readChunks(reader)) {
        failed.zones = std::max(failed.zones, m_loadReport.zones);
        m_loadReport = failed;
        return failLoad("Unable to load zone binary");
    }
    return size >= static_cast<std::int64_t>(ChunkReader::kHeaderSize) ||
           failLoad("Unable to read zone binary");
}

bool ZoneManager::readChunks(ChunkReader& reader) {
    // A list that could not be read names nothing but what the binary file names as well.
    m_loadReport.problem = LoadProblem::none;
    bool isDamaged = false;
    while (reader.next()) {
        if (reader.tag() == kZoneTag) {
            readZone(reader);
        } else {
            isDamaged = isDamaged || reader.isCut();
            reader.skip();
            m_loadReport.problem = LoadProblem::binaryForeign;
        }
    }
    const int read = lastZoneRead + 1;
    m_loadReport.zones = std::max(m_loadReport.zones, read);
    if (isDamaged || reader.hasRest() || m_loadReport.wholeZones < m_loadReport.zones) {
        m_loadReport.problem = LoadProblem::binaryDamaged;
    }
    return reader.good();
}

void ZoneManager::readZone(ChunkReader& reader) {
    if (!reader.readBody()) {
        return;
    }
    const ZoneReadResult read =
        nextZone().read(reader.body(), reader.statedSize(), frameCount, scale);
    if (read.endsOneEarly && !reader.isCut()) {
        reader.giveBackLast();
    }
    if (read.whole) {
        ++m_loadReport.wholeZones;
    } else if (read.framesRead > 0 && m_loadReport.partZones++ == 0) {
        m_loadReport.partFrames = read.framesRead;
        m_loadReport.storedFrames = read.framesStored;
    }
}

Zone& ZoneManager::nextZone() {
    ++lastZoneRead;
    if (lastZoneRead >= zoneCount()) {
        addZone(Zone::create(0)); // no frames: the record brings them
    }
    return *m_zones[static_cast<std::size_t>(lastZoneRead)];
}

bool ZoneManager::save(const std::string& videoPath) {
    return saveAs(core::withoutExtension(videoPath));
}

bool ZoneManager::saveAs(const std::string& basePath) {
    const bool replacesDamaged = !m_damagedBase.empty() && m_damagedBase == basePath;
    m_lastSaveFailure = {};
    const bool result = saveBoth(basePath, replacesDamaged ? core::ReplacedFiles::Need::must
                                                           : core::ReplacedFiles::Need::wish);
    if (m_lastSaveFailure.empty() && replacesDamaged) {
        m_damagedBase.clear();
    }
    if (m_lastSaveFailure.empty() && m_damagedBase.empty()) {
        m_loadReport = {};
    }
    return result;
}

bool ZoneManager::saveBoth(const std::string& basePath, core::ReplacedFiles::Need need) {
    core::KeepReplaced kept(m_keeper.get(), {basePath + kBinaryEnding, basePath + kInfoEnding},
                            need);
    core::SafeSave info;
    core::SafeSave binary;
    if (!info.open(basePath + kInfoEnding, "wt") || !writeInfo(info.file()) || !info.prepare()) {
        return failSave(kInfoFailed.source.data(), info.failure());
    }
    if (!binary.open(basePath + kBinaryEnding, "wb")) {
        return failSave("Unable to save zone binary file"_tr.source.data(), binary.failure());
    }
    const bool isPrepared = writeZones(binary.file()) && binary.prepare();
    // Both files are on the disk by now, so that the pair changes in two renames, or not at all.
    if (isPrepared && !kept.isReady()) {
        return failSave(kInfoFailed.source.data(), kept.failure());
    }
    if (isPrepared && !info.commit()) {
        return failSave(kInfoFailed.source.data(), info.failure());
    }
    if (isPrepared) {
        kept.replaced();
    }
    if (!isPrepared || !binary.commit()) {
        m_lastSaveFailure = binary.failure();
        if (m_lastSaveFailure.empty()) { // no step of the file failed, so it reports nothing
            m_lastSaveFailure = {basePath + kBinaryEnding,
                                 core::reason("zones cannot be stored"_tr)};
            core::writeStandardError("Not saved: " + m_lastSaveFailure.text());
        }
    }
    return true;
}

bool ZoneManager::failSave(const char* message, const core::FileError& reason) {
    core::Log::get()->Error("%s", message);
    m_lastSaveFailure = reason.empty() ? core::FileError{{}, message} : reason;
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
    return std::all_of(m_zones.begin(), m_zones.end(), [&](const std::shared_ptr<Zone>& zone) {
        return scale && zone->write(file, *scale);
    });
}

} // namespace zone
