// Converts videos, one after another, into clips of a scene's folder. What it does shows in its
// items, which windows display; it goes on when they close. UI thread only.
//
//   ImportQueue queue(loop, files, "Scenes/Fire/");
//   queue.setConverter(findConverter(files, usualPlaces(files, settings)));
//   queue.onChanged = [&] { show(queue.items()); };
//   queue.onDone = [&](const ImportItem& item) { addToScene(item.clip.name); };
//   queue.add("/home/ann/reception.mov");
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "import/Converter.h"
#include "import/ImportTypes.h"
#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"

namespace imports {

struct ImportTask;

class ImportQueue {
public:
    /// `folder` is absolute and ends in a separator; the others outlive the queue.
    ImportQueue(platform::EventLoop& loop, platform::FileSystem& files, std::string folder);
    /// Ends what runs, within half a second, without a report; nothing unfinished stays behind.
    ~ImportQueue();
    ImportQueue(const ImportQueue&) = delete;
    ImportQueue& operator=(const ImportQueue&) = delete;

    /// After every change of the items; may be empty. Must not destroy the queue.
    std::function<void()> onChanged;
    /// Once for each file that is in the folder now, whole and playable; may be empty. Must not
    /// destroy the queue.
    std::function<void(const ImportItem&)> onDone;

    /// For files that start from now on. Without a converter files fail.
    void setConverter(const Converter& converter) { m_converter = converter; }
    void setSettings(const ImportSettings& settings) { m_settings = settings; }
    [[nodiscard]] const ImportSettings& settings() const { return m_settings; }

    // Each of these begins at once when nothing else runs, and returns the item's id.
    int add(const std::string& source);
    /// Converts a clip of the folder (its name, with extension) again under a free name, with its
    /// sound, and its zones moved with the picture; the old files stay.
    int addRemake(const std::string& clip);

    // For a failed item; it waits again, in its old place.
    /// After nameTaken: takes the name with " 2" behind it.
    void keepBoth(int id);
    /// After cut: takes what there is.
    void importReadable(int id);

    /// A waiting item is cancelled at once; one that converts within half a second.
    void cancel(int id);
    void cancelAll();
    /// Takes an item that neither waits nor converts off the list.
    void remove(int id);

    [[nodiscard]] const std::vector<ImportItem>& items() const { return m_items; }
    /// Null when it is not there; valid until the next change.
    [[nodiscard]] const ImportItem* find(int id) const;
    /// Whether an item waits or converts.
    [[nodiscard]] bool isBusy() const;
    /// Of all items that neither failed nor were cancelled; 0 to 100.
    [[nodiscard]] int percent() const;

private:
    struct Order {
        bool takesFreeName = false;
        bool takesReadable = false;
    };

    [[nodiscard]] ImportItem* itemOf(int id);
    int append(ImportItem item);
    void retry(int id, Failure after, bool Order::*choice);
    void stopWaiting(ImportItem& item);
    void startNext();
    [[nodiscard]] std::shared_ptr<ImportTask> taskFor(const ImportItem& item) const;
    void look(ImportItem& item);
    void takeLook(const ImportTask& task, bool isWhole);
    void convert(ImportItem& item);
    void takeProgress();
    void takeResult(bool isWhole);
    void changed();

    platform::FileSystem& m_files;
    std::string m_folder;
    Converter m_converter;
    ImportSettings m_settings;
    std::vector<ImportItem> m_items;
    std::vector<Order> m_orders; ///< one for each item
    int m_lastId = 0;
    int m_lookedAt = 0;                 ///< 0 for none
    std::shared_ptr<ImportTask> m_task; ///< the one that converts
    jobs::BackgroundJob m_looking;
    jobs::BackgroundJob m_converting; ///< last: it uses all of the above
};

} // namespace imports
