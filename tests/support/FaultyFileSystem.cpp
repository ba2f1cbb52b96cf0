#include "tests/support/FaultyFileSystem.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <utility>

namespace support {
namespace {

class FaultyStream final : public platform::FileStream {
public:
    FaultyStream(FaultyFileSystem& owner, std::string path,
                 std::unique_ptr<platform::FileStream> real)
        : m_owner(owner), m_path(std::move(path)), m_real(std::move(real)) {}

    std::size_t read(void* buffer, std::size_t count) override {
        return m_real->read(buffer, allowed("read", count));
    }
    std::size_t write(const void* buffer, std::size_t count) override {
        return m_real->write(buffer, allowed("write", count));
    }
    bool seek(std::int64_t position) override { return works("seek") && m_real->seek(position); }
    std::int64_t tell() const override { return m_real->tell(); }
    std::int64_t size() const override { return m_real->size(); }
    bool sync() override { return works("sync") && m_real->sync(); }
    bool close() override {
        const bool good = works("close");
        return m_real->close() && good; // a failing close still releases the handle
    }
    int lastError() const override { return m_error != 0 ? m_error : m_real->lastError(); }

private:
    bool works(const char* operation) { return allowed(operation, 1) == 1; }

    std::size_t allowed(const char* operation, std::size_t count) {
        const Fault fault = m_owner.note(operation, m_path);
        if (fault == Fault::none) {
            return count;
        }
        m_error = m_owner.error();
        return fault == Fault::shorten ? count / 2 : 0;
    }

    FaultyFileSystem& m_owner;
    std::string m_path;
    std::unique_ptr<platform::FileStream> m_real;
    int m_error = 0;
};

} // namespace

void FaultyFileSystem::setRule(Rule rule, int error) {
    const std::lock_guard lock(m_mutex);
    m_rule = std::move(rule);
    m_error = error;
    m_stopped = false;
}

void FaultyFileSystem::breakAt(int number, Fault fault, int error) {
    setRule([=](const Call& call) { return call.number == number ? fault : Fault::none; }, error);
}

void FaultyFileSystem::failOn(const std::string& operation, int error) {
    setRule(
        [=](const Call& call) { return call.operation == operation ? Fault::fail : Fault::none; },
        error);
}

std::vector<std::string> FaultyFileSystem::callTexts() const {
    std::vector<std::string> texts;
    for (const Call& call : m_calls) {
        texts.push_back(call.operation + " " + call.path);
    }
    return texts;
}

Fault FaultyFileSystem::note(const std::string& operation, const std::string& path) {
    std::unique_lock lock(m_mutex);
    const Call call{static_cast<int>(m_calls.size()) + 1, operation, path};
    m_calls.push_back(call);
    if (m_stopped || !m_rule) {
        return m_stopped ? Fault::fail : Fault::none;
    }
    const Rule rule = m_rule;
    lock.unlock(); // a rule may block this call while others continue
    const Fault fault = rule(call);
    lock.lock();
    m_stopped = m_stopped || fault == Fault::stop;
    return fault;
}

int FaultyFileSystem::error() const {
    const std::lock_guard lock(m_mutex);
    return m_error;
}

bool FaultyFileSystem::broken(const std::string& operation, const std::string& path, int& error) {
    if (note(operation, path) == Fault::none) {
        return false;
    }
    error = this->error();
    return true;
}

std::string FaultyFileSystem::toDisk(std::string path) const {
    for (const auto& [seen, onDisk] : m_namesOnDisk) {
        for (auto at = path.find(seen); at != std::string::npos; at = path.find(seen, at)) {
            path.replace(at, seen.size(), onDisk);
            at += onDisk.size();
        }
    }
    return path;
}

std::unique_ptr<platform::FileStream> FaultyFileSystem::open(const std::string& path,
                                                             platform::OpenMode mode, int& error) {
    if (broken("open", path, error)) {
        return nullptr;
    }
    std::unique_ptr<platform::FileStream> stream = m_real.open(toDisk(path), mode, error);
    return stream ? std::make_unique<FaultyStream>(*this, path, std::move(stream)) : nullptr;
}

bool FaultyFileSystem::createFolder(const std::string& path, int& error) {
    return !broken("createFolder", path, error) && m_real.createFolder(toDisk(path), error);
}

bool FaultyFileSystem::removeFolder(const std::string& path, int& error) {
    return !broken("removeFolder", path, error) && m_real.removeFolder(toDisk(path), error);
}

std::unique_ptr<platform::FileLock> FaultyFileSystem::lockFile(const std::string& path,
                                                               int& error) {
    return broken("lockFile", path, error) ? nullptr : m_real.lockFile(toDisk(path), error);
}

bool FaultyFileSystem::removeFile(const std::string& path, int& error) {
    return !broken("removeFile", path, error) && m_real.removeFile(toDisk(path), error);
}

bool FaultyFileSystem::replaceFile(const std::string& from, const std::string& to, int& error) {
    return !broken("replaceFile", to, error) && m_real.replaceFile(toDisk(from), toDisk(to), error);
}

bool FaultyFileSystem::linkFile(const std::string& from, const std::string& to, int& error) {
    return !broken("linkFile", to, error) && m_real.linkFile(toDisk(from), toDisk(to), error);
}

void FaultyFileSystem::copyAccess(const std::string& from, const std::string& to) {
    int error = 0;
    if (!broken("copyAccess", to, error)) {
        m_real.copyAccess(toDisk(from), toDisk(to));
    }
}

bool FaultyFileSystem::syncFolder(const std::string& folder) {
    int error = 0;
    return !broken("syncFolder", folder, error) && m_real.syncFolder(toDisk(folder));
}

bool FaultyFileSystem::list(const std::string& folder,
                            std::vector<platform::FolderEntry>& entries) {
    int error = 0;
    entries.clear();
    if (broken("list", folder, error) || !m_real.list(toDisk(folder), entries)) {
        return false;
    }
    for (platform::FolderEntry& entry : entries) {
        for (const auto& [seen, onDisk] : m_namesOnDisk) {
            entry.name = entry.name == onDisk ? seen : entry.name;
        }
    }
    return true;
}

std::string FaultyFileSystem::currentFolder() {
    int error = 0;
    return broken("currentFolder", "", error) ? std::string() : m_real.currentFolder();
}

} // namespace support
