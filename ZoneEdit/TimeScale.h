// Which part of a clip the timeline shows, and which pixel shows which frame. The first frame is at
// the left end of the bar and the last one at its right end while all of the clip is shown.
#pragma once

namespace zoneedit {

class TimeScale {
public:
    /// Another clip, all of it: at least one frame. Zooming in ends at `least` frames.
    void setClip(int frames, int least);
    /// The bar, in window pixels.
    void setBar(int left, int width);

    [[nodiscard]] int frames() const { return m_frames; }
    /// Also of frames beside the part that is shown.
    [[nodiscard]] double xOf(double frame) const {
        return m_left + (frame - m_from) / m_span * m_width;
    }
    /// The frame nearest to a pixel; at the ends of the bar the last one that is shown.
    [[nodiscard]] int frameAt(int x) const;
    [[nodiscard]] double pixelsPerFrame() const { return m_width / m_span; }
    /// What is shown, in frames.
    [[nodiscard]] double from() const { return m_from; }
    [[nodiscard]] double span() const { return m_span; }
    [[nodiscard]] bool showsAll() const { return m_span >= wholeSpan(); }

    void showAll();
    /// Shows as many frames times `factor`; the one at the pixel `x` stays there.
    void zoom(double factor, int x);
    void move(double frames);
    /// Has `frame` on show. False when it was already.
    bool reveal(int frame);

private:
    /// Between the first and the last frame.
    [[nodiscard]] double wholeSpan() const { return m_frames > 1 ? m_frames - 1.0 : 1.0; }
    void show(double from, double span);

    int m_frames = 1;
    int m_least = 1;
    int m_left = 0;
    int m_width = 1;
    double m_from = 0;
    double m_span = 1;
};

} // namespace zoneedit
