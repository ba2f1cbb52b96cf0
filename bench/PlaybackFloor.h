// The minimum cost of exact access to an Ogg Theora file: libogg and libtheora alone, one thread,
// an index of every packet made beforehand, no conversion, no caching. The playback library is
// compared with it in the same run; the two share no code.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <ogg/ogg.h>
#include <theora/theoradec.h>

#include "bench/ConversionReport.h"

namespace bench {

class PlaybackFloor {
public:
    /// Reads the headers and builds the index. Throws std::runtime_error.
    explicit PlaybackFloor(const std::string& path);
    ~PlaybackFloor();
    PlaybackFloor(const PlaybackFloor&) = delete;
    PlaybackFloor& operator=(const PlaybackFloor&) = delete;

    [[nodiscard]] int frameCount() const { return static_cast<int>(m_index.size()); }
    [[nodiscard]] FrameSize frameSize() const {
        return {static_cast<int>(m_info.frame_width), static_cast<int>(m_info.frame_height)};
    }
    /// Decodes from the frame's keyframe to the frame.
    void seek(int frame);
    /// Decodes the next frame; false at the end.
    bool next();
    /// Frames so far that only repeat the one before, at no cost.
    [[nodiscard]] int repeatedFrames() const { return m_repeatedFrames; }

private:
    struct FileClose {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    struct Entry {
        long page = 0;    ///< offset of the last page that ends before the frame's keyframe
        int pageEnds = 0; ///< first frame after that page
        int keyframe = 0;
    };

    [[nodiscard]] bool readPage(ogg_page& page);
    [[nodiscard]] bool readPacket(ogg_packet& packet);
    void readHeaders();
    void buildIndex();
    void startAt(long offset);

    std::unique_ptr<std::FILE, FileClose> m_file;
    ogg_sync_state m_sync{};
    ogg_stream_state m_stream{};
    th_info m_info{};
    th_setup_info* m_setup = nullptr;
    th_dec_ctx* m_decoder = nullptr;
    bool m_haveStream = false;
    int m_repeatedFrames = 0;
    long m_pageStart = 0;
    long m_pageEnd = 0;
    long m_dataStart = 0;
    std::vector<Entry> m_index;
};

} // namespace bench
