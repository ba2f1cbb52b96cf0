// Makes zip archives in memory, with fields that lie where a test wants it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <zlib.h>

namespace toolkit_test {

class ZipMaker {
public:
    /// Set before add: written instead of the true value.
    std::optional<std::uint16_t> flags;
    std::optional<std::uint16_t> method;
    std::optional<std::uint32_t> crc;
    std::optional<std::uint32_t> size;
    std::optional<std::uint32_t> packedSize;
    std::optional<std::uint32_t> offset;

    void add(const std::string& name, const std::string& data, bool deflated) {
        const std::string packed = deflated ? deflate(data) : data;
        const auto checksum = static_cast<std::uint32_t>(
            crc32_z(0, reinterpret_cast<const Bytef*>(data.data()), data.size()));
        const auto start = static_cast<std::uint32_t>(m_files.size());
        std::string common;
        number(common, 20, 2);
        number(common, flags.value_or(0), 2);
        number(common, method.value_or(deflated ? 8 : 0), 2);
        number(common, 0, 4); // time and date
        number(common, crc.value_or(checksum), 4);
        number(common, packedSize.value_or(static_cast<std::uint32_t>(packed.size())), 4);
        number(common, size.value_or(static_cast<std::uint32_t>(data.size())), 4);
        number(common, static_cast<std::uint32_t>(name.size()), 2);
        number(common, 0, 2); // extra field
        m_files += "PK\x03\x04" + common + name + packed;
        m_directory += "PK\x01\x02";
        number(m_directory, 20, 2);
        m_directory += common;
        m_directory.append(10, '\0'); // comment, disk, attributes
        number(m_directory, offset.value_or(start), 4);
        m_directory += name;
        ++m_count;
    }

    [[nodiscard]] std::vector<std::uint8_t> finish(const std::string& comment = {}) const {
        std::string all = m_files + m_directory + "PK\x05\x06" + std::string(4, '\0');
        number(all, m_count, 2);
        number(all, m_count, 2);
        number(all, static_cast<std::uint32_t>(m_directory.size()), 4);
        number(all, static_cast<std::uint32_t>(m_files.size()), 4);
        number(all, static_cast<std::uint32_t>(comment.size()), 2);
        all += comment;
        return {all.begin(), all.end()};
    }

private:
    static void number(std::string& to, std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            to.push_back(static_cast<char>(value >> (8 * i)));
        }
    }

    /// Without the two bytes before and the four behind that zlib's own format adds.
    static std::string deflate(const std::string& data) {
        uLongf size = compressBound(static_cast<uLong>(data.size()));
        std::string packed(size, '\0');
        compress(reinterpret_cast<Bytef*>(packed.data()), &size,
                 reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size()));
        return packed.substr(2, size - 6);
    }

    std::string m_files;
    std::string m_directory;
    std::uint32_t m_count = 0;
};

} // namespace toolkit_test
