// The real file system with faults: any call can fail, be partial, or be the last one that reaches
// the disk. Used by all tests of saving. It can also show names that this system's disk may not
// allow.
//
//   FaultyFileSystem files(platform::nativeFileSystem());
//   files.stopAt(4);                       // the machine stops at the fourth call
//   files.failOn("sync", EIO);             // every sync fails
#pragma once

#include <cerrno>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace support {

/// What happens to one call.
enum class Fault {
    none,
    fail,    ///< nothing happens and the call reports failure
    shorten, ///< a read or a write stops half-way; any other call fails
    stop     ///< this call and all later ones fail: nothing reaches the disk any more
};

struct Call {
    int number;            ///< from 1, streams' calls included
    std::string operation; ///< "open", "createFolder", "read", "write", "sync", "close" ...
    std::string path;      ///< for stream calls the path it was opened with
};

/// `real` must outlive it. Streams that it opened may not outlive it. Any thread may use the files;
/// tests read the calls while no other thread does.
class FaultyFileSystem final : public platform::FileSystem {
public:
    using Rule = std::function<Fault(const Call&)>;

    explicit FaultyFileSystem(platform::FileSystem& real) : m_real(real) {}

    /// `error` is the code that faulty calls report.
    void setRule(Rule rule, int error);
    void failAt(int number) { breakAt(number, Fault::fail, EIO); }
    void shortenAt(int number) { breakAt(number, Fault::shorten, ENOSPC); }
    void stopAt(int number) { breakAt(number, Fault::stop, EIO); }
    void failOn(const std::string& operation, int error);
    void heal() { setRule(nullptr, 0); }

    [[nodiscard]] const std::vector<Call>& calls() const { return m_calls; }
    /// The calls as "operation path", for comparing orders.
    [[nodiscard]] std::vector<std::string> callTexts() const;
    void forgetCalls() { m_calls.clear(); }

    /// From now on the file or folder `onDisk` appears everywhere as `seen`.
    void showAs(const std::string& seen, const std::string& onDisk) {
        m_namesOnDisk[seen] = onDisk;
    }

    /// Records a call and returns its fault; streams call it too.
    [[nodiscard]] Fault note(const std::string& operation, const std::string& path);
    [[nodiscard]] int error() const;

    [[nodiscard]] std::unique_ptr<platform::FileStream>
    open(const std::string& path, platform::OpenMode mode, int& error) override;
    [[nodiscard]] std::optional<platform::FileInfo> info(const std::string& path) override {
        return m_real.info(toDisk(path));
    }
    bool createFolder(const std::string& path, int& error) override;
    bool removeFolder(const std::string& path, int& error) override;
    bool removeFile(const std::string& path, int& error) override;
    [[nodiscard]] std::unique_ptr<platform::FileLock> lockFile(const std::string& path,
                                                               int& error) override;
    bool replaceFile(const std::string& from, const std::string& to, int& error) override;
    bool linkFile(const std::string& from, const std::string& to, int& error) override;
    void copyAccess(const std::string& from, const std::string& to) override;
    bool syncFolder(const std::string& folder) override;
    [[nodiscard]] bool list(const std::string& folder,
                            std::vector<platform::FolderEntry>& entries) override;
    [[nodiscard]] std::string currentFolder() override;
    bool setCurrentFolder(const std::string& folder) override {
        return m_real.setCurrentFolder(folder);
    }
    [[nodiscard]] std::string fullPath(const std::string& path) override {
        return m_real.fullPath(path);
    }
    [[nodiscard]] std::string resolveLink(const std::string& path) override {
        return m_real.resolveLink(path);
    }
    [[nodiscard]] std::string errorText(int error) override { return m_real.errorText(error); }

private:
    void breakAt(int number, Fault fault, int error);
    [[nodiscard]] bool broken(const std::string& operation, const std::string& path, int& error);
    [[nodiscard]] std::string toDisk(std::string path) const;

    platform::FileSystem& m_real;
    mutable std::mutex m_mutex;
    Rule m_rule;
    int m_error = 0;
    bool m_stopped = false;
    std::vector<Call> m_calls;
    std::map<std::string, std::string> m_namesOnDisk; ///< by the name seen
};

} // namespace support
