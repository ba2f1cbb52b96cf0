// The zones of one video and the two files they are kept in: BASE-ZoneInfo.xml with the names and
// BASE-ZoneInfo.bin with the shapes, where BASE is the video's path without its extension. One
// thread at a time; other threads than the main one read under a LogCollector.
//
// An operation given a zone that is not there logs "..\ZoneManager.cpp:LINE Zone index is invalid"
// ("Invalid zone index" for removal and names) and does nothing, with false or "" as its result.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/File.h"
#include "core/FileError.h"
#include "core/ReplacedFiles.h"
#include "zone/EditContext.h"
#include "zone/LoadReport.h"
#include "zone/Scale.h"
#include "zone/Zone.h"

namespace zone {

/// The first word of a zone's record.
inline constexpr std::uint32_t kZoneTag = 0x5A4F4E45;

class ChunkReader;

class ZoneManager {
public:
    /// No zones. Empty only when there is no memory.
    [[nodiscard]] static std::shared_ptr<ZoneManager> createEmpty();
    /// Loads the zones of the video at `basePath` (see above); with `loadBinary` their shapes as
    /// well, each zone brought to `frameCount` frames or left as stored for kStoredFrameCount.
    /// Without a scale no shape can be read.
    /// Empty, and all but an empty path logged, when a file that is needed cannot be used. A
    /// missing information file is none of these: a video without zones is normal.
    [[nodiscard]] static std::shared_ptr<ZoneManager> create(const std::string& basePath,
                                                             int frameCount, bool loadBinary,
                                                             std::optional<Scale> scale = {});
    /// The same with shapes, but no zones where that gives nothing: then, as after a part was read,
    /// loadReport() says why. Empty only when there is no memory.
    [[nodiscard]] static std::shared_ptr<ZoneManager>
    createForEditing(const std::string& basePath, int frameCount, std::optional<Scale> scale);

    [[nodiscard]] int zoneCount() const { return static_cast<int>(m_zones.size()); }
    /// Empty for an index out of range. Logs nothing.
    [[nodiscard]] std::shared_ptr<Zone> zone(int index);
    [[nodiscard]] std::shared_ptr<const Zone> zone(int index) const;
    /// Appends; an empty pointer is not taken.
    void addZone(const std::shared_ptr<Zone>& zone);
    /// In front of the zone of that number; later ones move up.
    void insertZone(int index, std::shared_ptr<Zone> zone);
    /// Exchanges all zones for those of the list, which holds no empty pointer.
    void swapZones(std::vector<std::shared_ptr<Zone>>& zones) noexcept { m_zones.swap(zones); }
    /// Later zones move down.
    void removeZone(int zone);
    [[nodiscard]] std::string getZoneName(int zone) const;
    /// Names are cut as Zone::setName says.
    void setZoneName(int zone, const std::string& name);

    // The zone's operations of the same names; points are clamped to the picture area below. What
    // they do to the frames goes into `changes`, for those who may take it back.
    [[nodiscard]] bool isActive(int zone, int frame) const;
    void setActive(EditContext& context, int zone, int frame, bool active,
                   TrackChanges* changes = nullptr);
    bool hitTest(EditContext& context, int zone, int frame, int x, int y) const;
    void endMove(int zone, int frame, int x, int y) const;
    void moveSelectedPoint(EditContext& context, int zone, int frame, int x, int y,
                           TrackChanges* changes = nullptr);
    void addPoint(EditContext& context, int zone, int frame, int x, int y,
                  TrackChanges* changes = nullptr);
    void deletePoint(EditContext& context, int zone, int frame, int x, int y,
                     TrackChanges* changes = nullptr, bool orSame = false);
    /// Both are there.
    void putShape(EditContext& context, int zone, int frame, const ZoneShape& shape,
                  TrackChanges* changes);
    void replaceShapes(EditContext& context, int zone, const ShapeStretch& stretch,
                       TrackChanges* changes);

    /// The zones as they are now, without what is known about their files: for another thread,
    /// which may read it and call the two functions below. Costs next to nothing; each zone's first
    /// change after it copies that zone's shapes.
    [[nodiscard]] std::shared_ptr<const ZoneManager> snapshot() const;
    /// What a save writes into each file, from its start, without logging. False when a write
    /// fails or, for the binary file, there is no scale or a zone is too long for its format.
    [[nodiscard]] bool writeInfo(core::File& file) const;
    [[nodiscard]] bool writeZones(core::File& file) const;

    /// Writes both files of the video at `videoPath`, or neither. False, logged, when the
    /// information file cannot be written or the binary file cannot be opened. A binary file that
    /// could be opened but not written whole gives true. Intended: ask lastSaveFailure(). Files
    /// that were not read whole are replaced only once the keeper has them.
    bool save(const std::string& videoPath);
    /// The same for a path that has no extension to take away.
    bool saveAs(const std::string& basePath);
    /// Is handed the files that a save replaces. Empty for none.
    void setKeeper(std::shared_ptr<core::ReplacedFiles> keeper) { m_keeper = std::move(keeper); }
    /// Why the last save did not bring both files to the disk, for people; empty when it did. The
    /// old file is whole then.
    [[nodiscard]] const core::FileError& lastSaveFailure() const { return m_lastSaveFailure; }
    /// What loading came to. Clean after the next good save of the same files.
    [[nodiscard]] const LoadReport& loadReport() const { return m_loadReport; }

    /// The number of the last zone that the binary file held, -1 for none.
    int lastZoneRead = -1;
    /// The picture area in display pixels: what points are clamped to. A side that is not positive
    /// clamps negative values alone.
    int videoWidth = 0;
    int videoHeight = 0;
    /// Of the video; kStoredFrameCount when it does not tell.
    int frameCount = 0;
    /// Between points and files. Without one the binary file cannot be written.
    std::optional<Scale> scale;

private:
    [[nodiscard]] Zone* checkedZone(int index, const char* message, int line);
    [[nodiscard]] const Zone* checkedZone(int index, const char* message, int line) const;
    [[nodiscard]] EditScope scope(EditContext& context, int zone, TrackChanges* changes) const;
    [[nodiscard]] static std::shared_ptr<ZoneManager> load(const std::string& basePath,
                                                           int frameCount, bool loadBinary,
                                                           std::optional<Scale> scale,
                                                           LoadReport& report);
    [[nodiscard]] bool loadInfo(const std::string& basePath);
    [[nodiscard]] bool loadBinary(const std::string& basePath);
    /// False when the file could not be read to its end.
    [[nodiscard]] bool readChunks(ChunkReader& reader);
    void readZone(ChunkReader& reader);
    Zone& nextZone();
    [[nodiscard]] bool saveBoth(const std::string& basePath, core::ReplacedFiles::Need need);
    bool failSave(const char* message, const core::FileError& reason);

    std::vector<std::shared_ptr<Zone>> m_zones; ///< no entry is empty
    std::shared_ptr<core::ReplacedFiles> m_keeper;
    core::FileError m_lastSaveFailure;
    LoadReport m_loadReport;
    std::string m_damagedBase; ///< of the files a save has to keep; empty for none
};

} // namespace zone
