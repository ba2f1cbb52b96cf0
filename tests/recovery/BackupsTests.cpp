#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/ReplacedFiles.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "recovery/Backups.h"
#include "recovery/Versions.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/FixedClock.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"

namespace {

using Need = core::ReplacedFiles::Need;
using Texts = std::vector<std::string>;

constexpr std::int64_t kDay = 86'400;

class BackupsTest : public support::TempFolderTest {
protected:
    std::unique_ptr<recovery::Backups> makeBackups() {
        return std::make_unique<recovery::Backups>([] { return folder(); },
                                                   [this] { return m_isWanted; });
    }
    /// As the editors save, with the thread's work done at the end. Whether the file was replaced.
    bool save(const std::string& text, Need need = Need::wish) {
        m_clock.time += 60;
        testing::internal::CaptureStderr();
        bool good = false;
        {
            core::KeepReplaced kept(m_backups.get(), {m_path}, need);
            core::SafeSave saving;
            good = saving.open(m_path, "wb") && saving.file().writeString(text) &&
                   saving.prepare() && kept.isReady() && saving.commit();
            if (good) {
                kept.replaced();
            }
            m_failure = kept.failure().text();
        }
        m_backups->settle();
        (void)testing::internal::GetCapturedStderr();
        return good;
    }
    [[nodiscard]] std::vector<recovery::Version> versions() {
        return recovery::listVersions(platform::nativeFileSystem(), m_clock, folder()).versions;
    }
    /// What the versions hold, the newest first.
    [[nodiscard]] Texts texts() {
        Texts result;
        for (const recovery::Version& version : versions()) {
            result.push_back(support::readBytes(version.base + version.endings.front()));
        }
        return result;
    }
    [[nodiscard]] static std::string folder() { return recovery::sceneVersionsFolder("Fire"); }
    /// Bytes of a version that a save at that time kept.
    void add(const std::string& to, std::int64_t kept, std::size_t bytes = 1,
             bool damaged = false) {
        recovery::Version version;
        version.kept = version.saved = kept;
        version.isDamaged = damaged;
        support::writeBytes(version.baseIn(to) + "-Scene.xml", std::string(bytes, 'x'));
    }
    [[nodiscard]] std::size_t warnings() const { return m_log.count("Warning: "); }

    support::FixedClock m_clock;
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_services{{&m_files, &m_clock, &platform::nativeProcess()}};
    support::LogCapture m_log;
    bool m_isWanted = true;
    std::string m_path = "Scene.xml";
    std::string m_failure;
    std::unique_ptr<recovery::Backups> m_backups = makeBackups();
};

TEST_F(BackupsTest, EachSaveKeepsWhatItReplacesWithAndWithoutLinks) {
    for (const bool hasLinks : {true, false}) {
        SCOPED_TRACE(hasLinks);
        std::filesystem::remove_all("Backups");
        support::writeBytes(m_path, "1");
        m_files.setRule(
            [=](const support::Call& call) {
                return call.operation == "linkFile" && !hasLinks ? support::Fault::fail
                                                                 : support::Fault::none;
            },
            EPERM);
        for (const char* text : {"2", "2", "3", "3", "2"}) {
            EXPECT_TRUE(save(text));
        }
        EXPECT_EQ(texts(), (Texts{"3", "2", "1"})) << "the same bytes again make no version";
        EXPECT_EQ(support::readBytes(m_path), "2");
        m_isWanted = false;
        EXPECT_TRUE(save("4"));
        EXPECT_EQ(texts().size(), 3U) << "the author wants none";
        EXPECT_TRUE(save("5", Need::must));
        ASSERT_EQ(texts().size(), 4U);
        EXPECT_TRUE(versions().front().isDamaged && texts().front() == "4");
        m_isWanted = true;
    }
    EXPECT_EQ(warnings(), 0U);
}

TEST_F(BackupsTest, TheEndStopsTheComparisonAndALaterSaveMakesUpForIt) {
    const std::string large(16U << 20U, 'x');
    support::writeBytes(m_path, large);
    std::atomic<int> reads = 0;
    std::atomic<bool> isLeaving = false;
    m_files.setRule(
        [&](const support::Call& call) {
            reads += call.operation == "read" ? 1 : 0;
            for (int i = 0; reads > 0 && (i < 500 || !isLeaving); ++i) {
                std::this_thread::yield();
            }
            return support::Fault::none;
        },
        0);
    for (int round = 1; round <= 2; ++round) { // the same bytes again, compared with the older ones
        m_clock.time += 60;
        support::writeBytes("new", large);
        m_backups->begin({m_path}, Need::wish);
        EXPECT_TRUE(m_backups->beforeReplace().empty());
        std::filesystem::rename("new", m_path);
        m_backups->end(true);
        while (reads == 0) {
            std::this_thread::yield();
        }
        isLeaving = true;
        m_backups = makeBackups();
        EXPECT_LT(reads, 100) << "of 128";
        EXPECT_EQ(versions().size(), static_cast<std::size_t>(round)) << "not known to be the same";
        isLeaving = false;
        reads = 0;
    }
    m_files.heal();
    EXPECT_TRUE(save("1") && save("2"));
    EXPECT_TRUE(texts() == (Texts{"1", large}));
}

TEST_F(BackupsTest, AVersionThatAnotherProgramKeepsInTheSameSecondStays) {
    support::writeBytes(m_path, "ours");
    bool isFirst = true;
    m_files.setRule(
        [&isFirst](const support::Call& call) {
            if (call.operation == "linkFile" && std::exchange(isFirst, false)) {
                support::writeBytes(call.path, "theirs");
            }
            return support::Fault::none;
        },
        EEXIST);
    EXPECT_TRUE(save("new"));
    EXPECT_EQ(texts(), (Texts{"ours", "theirs"}));
}

TEST_F(BackupsTest, ALinkIsFollowedToTheFileThatTheSaveReplaces) {
    support::writeBytes("far/real.xml", "old");
    std::error_code noLinksHere;
    std::filesystem::create_symlink("far/real.xml", m_path, noLinksHere);
    if (noLinksHere) {
        return;
    }
    EXPECT_TRUE(save("new"));
    EXPECT_EQ(support::readBytes("far/real.xml"), "new");
    EXPECT_EQ(texts(), Texts{"old"});
    EXPECT_FALSE(std::filesystem::is_symlink(versions().front().base + "-Scene.xml"));
}

TEST_F(BackupsTest, NoFaultDamagesASceneOrAVersion) {
    for (const auto plan :
         {&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
          &support::FaultyFileSystem::stopAt}) {
        for (const bool hasLinks : {true, false}) {
            std::size_t calls = 0;
            for (std::size_t number = 0; number <= calls; ++number) { // the first run has no fault
                SCOPED_TRACE(number);
                std::filesystem::remove_all("Backups");
                std::filesystem::remove(m_path);
                support::writeBytes(m_path, "one");
                m_files.forgetCalls();
                m_files.heal();
                EXPECT_TRUE(save("two"));
                const auto before = static_cast<int>(m_files.calls().size());
                if (hasLinks) {
                    (m_files.*plan)(before + static_cast<int>(number));
                } else {
                    // Without links the copies are the only calls that a fault may meet.
                    m_files.setRule(
                        [=](const support::Call& call) {
                            const bool here = call.number == before + static_cast<int>(number);
                            return here || call.operation == "linkFile" ? support::Fault::fail
                                                                        : support::Fault::none;
                        },
                        EIO);
                }
                const bool good = save("three");
                calls =
                    number == 0 ? m_files.calls().size() - static_cast<std::size_t>(before) : calls;
                m_files.heal();
                EXPECT_EQ(support::readBytes(m_path), good ? "three" : "two");
                for (const std::string& text : texts()) {
                    EXPECT_TRUE(text == "one" || text == "two") << text;
                }
                EXPECT_EQ(texts().empty(), false) << "an older version is never lost";
                EXPECT_TRUE(save("four"));
                EXPECT_EQ(texts().front(), good ? "three" : "two");
            }
            EXPECT_GT(calls, 15U);
        }
    }
}

TEST_F(BackupsTest, AFolderThatCannotBeWrittenNeverStopsASaveAndIsSaidOnce) {
    support::writeBytes(m_path, "1");
    support::writeBytes("Backups", "a file in the place of the folder");
    EXPECT_TRUE(save("2") && save("3"));
    EXPECT_EQ(support::readBytes(m_path), "3");
    EXPECT_EQ(warnings(), 1U) << m_log.page();
    EXPECT_FALSE(save("4", Need::must)) << "work that nobody has read would be gone";
    EXPECT_NE(m_failure, "");
    EXPECT_EQ(support::readBytes(m_path), "3");
    m_backups = std::make_unique<recovery::Backups>([] { return std::string(); },
                                                    [this] { return m_isWanted; });
    EXPECT_FALSE(save("4", Need::must)) << "no folder is known";
    m_backups = makeBackups();
    // The disk is full, then folders vanish.
    std::filesystem::remove("Backups");
    m_files.setRule(
        [](const support::Call& call) {
            const bool isBackup = call.path.find("Backups") != std::string::npos;
            return isBackup && call.operation != "list" ? support::Fault::fail
                                                        : support::Fault::none;
        },
        ENOSPC);
    EXPECT_TRUE(save("5") && save("6"));
    m_files.heal();
    EXPECT_TRUE(save("7"));
    std::filesystem::remove_all("Backups");
    EXPECT_TRUE(save("8"));
    EXPECT_EQ(texts(), Texts{"7"});
}

TEST_F(BackupsTest, TheNewestTwentyAndTheFirstOfEachDayStay) {
    const std::int64_t today = m_clock.time - m_clock.time % kDay;
    m_clock.time = today + kDay / 2;
    std::vector<std::int64_t> expected;
    for (int hour = 0; hour < 12; ++hour) { // 12 today and 12 yesterday: 20 of them are the newest
        add(folder(), today + hour * 3600);
        add(folder(), today - kDay + hour * 3600);
        expected.push_back(today + hour * 3600);
        if (hour >= 4 || hour == 0) {
            expected.push_back(today - kDay + hour * 3600);
        }
    }
    for (int day = 2; day < 60; ++day) {
        add(folder(), today - day * kDay + 7200);
        add(folder(), today - day * kDay + 3600);
        if (day < 30) {
            expected.push_back(today - day * kDay + 3600);
        }
    }
    add(folder(), today - 300 * kDay, 1, true);
    expected.push_back(today - 300 * kDay);
    recovery::tidy(m_files, m_clock, "Backups/", folder());
    std::sort(expected.rbegin(), expected.rend());
    std::vector<std::int64_t> kept;
    for (const recovery::Version& version : versions()) {
        kept.push_back(version.kept);
    }
    EXPECT_EQ(kept, expected);
}

TEST_F(BackupsTest, TheNewestStayTheNewestWhenTheClockGoesBack) {
    support::writeBytes(m_path, "0");
    for (int number = 1; number <= 30; ++number) {
        m_clock.time -= number == 25 ? 5 * kDay : 0;
        EXPECT_TRUE(save(std::to_string(number)));
    }
    ASSERT_GE(texts().size(), recovery::kNewestKept);
    for (int newer = 0; newer < static_cast<int>(recovery::kNewestKept); ++newer) {
        EXPECT_EQ(texts()[static_cast<std::size_t>(newer)], std::to_string(29 - newer));
    }
}

TEST_F(BackupsTest, TheOldestGoWhenAllTogetherTakeTooMuch) {
    const std::string zones = recovery::zoneVersionsFolder("Other", "clip");
    add(folder(), 1000, 40);
    add(zones, 2000, 40);
    add(folder(), 3000, 40);
    add(zones, 4000, 20);
    recovery::tidy(m_files, m_clock, "Backups/", folder(), 100);
    EXPECT_EQ(versions().size(), 1U);
    EXPECT_EQ(recovery::listVersions(m_files, m_clock, zones).versions.size(), 2U);
    add(folder(), 5000, 1000);
    add(zones, 500, 1, true);
    recovery::tidy(m_files, m_clock, "Backups/", folder(), 100);
    ASSERT_EQ(versions().size(), 1U);
    EXPECT_EQ(versions()[0].kept, 5000) << "the newest of each folder";
    const auto ofZones = recovery::listVersions(m_files, m_clock, zones).versions;
    ASSERT_EQ(ofZones.size(), 2U);
    EXPECT_TRUE(ofZones[0].kept == 4000 && ofZones[1].isDamaged);
}

TEST_F(BackupsTest, WhatIsNoVersionIsLeftAloneAndSaidOnce) {
    const std::string good = "20231114T221320Z-0-20231114T221320Z";
    const Texts names{"notes.txt",
                      "20231114T221320Z-0-20231114T221320Z.xml",
                      "20231314T221320Z-0-20231114T221320Z-Scene.xml",
                      "20231114T226020Z-0-20231114T221320Z-Scene.xml",
                      "20231114T221320Z--1-20231114T221320Z-Scene.xml",
                      "20231114T221320Z-0-20231114T221320Z-damage-Scene.xml",
                      "-Scene.xml",
                      "20231114T221320Z-99999-20231114T221320Z-Scene.xml",
                      "20241120T000000Z-0-20231114T221320Z-Scene.xml",
                      "99991231T235959Z-9999-20231114T221320Z-Scene.xml"};
    for (const std::string& name : names) {
        support::writeBytes(folder() + name, "odd");
    }
    support::makeFolder(folder() + good + "-Scene.xml");
    std::error_code noLinksHere;
    std::filesystem::create_directory_symlink("../..", folder() + "circle", noLinksHere);
    std::filesystem::create_symlink("notes.txt", folder() + good + "-ZoneInfo.xml", noLinksHere);
    const std::size_t links = noLinksHere ? 0 : 1;
    EXPECT_EQ(recovery::listVersions(m_files, m_clock, folder()).odd.size(), names.size() + links);
    support::writeBytes(m_path, "1");
    EXPECT_TRUE(save("2") && save("3"));
    EXPECT_EQ(texts(), (Texts{"2", "1"}));
    EXPECT_EQ(warnings(), 1U) << m_log.page();
    for (const std::string& name : names) {
        EXPECT_TRUE(support::exists(folder() + name));
    }
}

} // namespace
