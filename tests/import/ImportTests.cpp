// Files on their way into a scene's folder: whatever the converter does, the author learns why, and
// nothing unfinished stays.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "import/Converter.h"
#include "import/ImportJob.h"
#include "import/ImportQueue.h"
#include "import/ImportTypes.h"
#include "import/Names.h"
#include "platform/Environment.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/RefusedMemory.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace {

using imports::Failure;
using imports::ImportItem;
using imports::ImportQueue;
using imports::ImportState;
using support::filesBelow;
using support::readBytes;
using support::writeBytes;
using Names = std::vector<std::string>;

class ImportTest : public support::TempFolderTest {
protected:
    ImportTest() {
        support::makeFolder("Scene");
        support::ClipSpec spec;
        spec.frames = 10;
        writeBytes("good.ogv", support::makeClip(spec));
        spec.frames = 6;
        writeBytes("short.ogv", support::makeClip(spec));
        m_queue.emplace(m_loop, m_files, m_folder.path() + "Scene/");
        m_queue->setConverter({FAKE_CONVERTER, FAKE_CONVERTER});
        m_queue->onDone = [this](const ImportItem& item) { m_done.push_back(item.clip.name); };
    }

    std::string source(const std::string& name) {
        writeBytes(name, "a phone's video");
        return m_folder.path() + name;
    }
    /// Waits until a part of it is converted.
    void begin(int id) {
        while (m_queue->find(id)->percent == 0) {
            ASSERT_NE(m_queue->find(id)->state, ImportState::failed);
            m_loop.processEvents(true);
        }
    }
    const ImportItem& finish(int id) {
        while (m_queue->isBusy()) {
            m_loop.processEvents(true);
        }
        return *m_queue->find(id);
    }
    const ImportItem& import(const std::string& name) { return finish(m_queue->add(source(name))); }
    /// Without a queue, with limits that a test can wait for.
    imports::JobResult runWith(const std::string& name, imports::JobLimits limits) {
        const imports::JobRequest request{.source = source(name),
                                          .folder = m_folder.path() + "Scene/",
                                          .converter = {FAKE_CONVERTER, FAKE_CONVERTER},
                                          .limits = limits};
        return imports::runImport(
            m_files, request, [](int, double) {}, [] { return false; });
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    support::TaskLoop m_loop;
    std::optional<ImportQueue> m_queue;
    Names m_done;
};

TEST_F(ImportTest, FilesAreConvertedOneAfterTheOther) {
    const int first = m_queue->add(source("lobby.mp4"));
    const int second = m_queue->add(source("way out.mov"));
    EXPECT_EQ(m_queue->find(second)->state, ImportState::waiting);
    const ImportItem& item = finish(second);
    EXPECT_EQ(item.state, ImportState::done);
    EXPECT_EQ(item.clip.frameCount, 10);
    EXPECT_EQ(item.clip.framesPerSecond, 25);
    EXPECT_EQ(item.clip.bytes, readBytes("good.ogv").size());
    ASSERT_TRUE(m_queue->find(first)->facts);
    EXPECT_EQ(m_queue->find(first)->facts->frame, (platform::Size{64, 48}));
    EXPECT_EQ(m_queue->percent(), 100);
    EXPECT_EQ(m_done, (Names{"lobby.ogv", "way out.ogv"}));
    EXPECT_EQ(filesBelow("Scene"), m_done);
    EXPECT_EQ(readBytes("lobby.mp4"), "a phone's video");
    m_queue->remove(first);
    EXPECT_EQ(m_queue->items().size(), 1U);
}

TEST_F(ImportTest, WithoutMemoryForItsJobAFileGoesOnWaiting) {
    (void)import("hall.mp4");
    bool isRefused = true;
    for (int allocations = 0; isRefused; ++allocations) {
        const int id = m_queue->add(source("hall.mp4"));
        const imports::ImportFailure& failure = finish(id).failure;
        ASSERT_EQ(failure.kind, Failure::nameTaken) << failure.details;
        isRefused = false;
        support::allocationsLeft = allocations;
        try {
            m_queue->keepBoth(id);
        } catch (const std::bad_alloc&) {
            isRefused = true;
        }
        support::allocationsLeft = -1;
        ASSERT_EQ(m_queue->find(id)->state,
                  isRefused ? ImportState::waiting : ImportState::converting);
        (void)m_queue->add(source("lobby.mp4")); // begins what waits
        (void)finish(id);
    }
}

TEST_F(ImportTest, EveryFailureHasItsReasonAndLeavesNothing) {
    const std::tuple<const char*, Failure> cases[] = {
        {"dies.mp4", Failure::stopped},
        {"disk full.mp4", Failure::diskFull},
        {"damaged.mp4", Failure::cut},
        {"short.mp4", Failure::cut},
        {"nothing.mp4", Failure::stopped},
        {"floods.mp4", Failure::stopped},
        {"complains.mp4", Failure::stopped},
        {"grows.mp4", Failure::tooLarge},
        {"vanishes.mp4", Failure::vanished},
        {"probe floods.mp4", Failure::unreadable},
        {"probe nonsense.mp4", Failure::noPicture},
        {"probe fails.mp4", Failure::unreadable},
    };
    for (const auto& [name, failure] : cases) {
        const ImportItem& item = import(name);
        EXPECT_EQ(item.state, ImportState::failed) << name;
        EXPECT_EQ(item.failure.kind, failure)
            << name << ": " << imports::failureText(item.failure) << item.failure.details;
        EXPECT_EQ(filesBelow("Scene"), Names{}) << name;
    }
    EXPECT_EQ(import("dies.mp4").failure.code, 9);
    EXPECT_EQ(finish(m_queue->add(m_folder.path() + "missing.mp4")).failure.kind,
              Failure::vanished);
    EXPECT_EQ(finish(m_queue->add(m_folder.path() + "Scene")).failure.kind, Failure::unreadable);
    m_queue->setConverter({});
    EXPECT_EQ(import("lobby.mp4").failure.kind, Failure::noConverter);
    m_queue->setConverter({m_folder.path() + "no", m_folder.path() + "program"});
    EXPECT_EQ(import("lobby.mp4").failure.kind, Failure::noConverter);
    EXPECT_EQ(m_done, Names{});
}

TEST_F(ImportTest, LimitsEndWhatWouldNeverEnd) {
    imports::JobLimits limits;
    limits.run.stall = std::chrono::milliseconds(200);
    EXPECT_EQ(runWith("hangs.mp4", limits).failure.kind, Failure::stuck);
    EXPECT_EQ(runWith("probe hangs.mp4", limits).failure.kind, Failure::stuck);
    EXPECT_EQ(filesBelow("Scene"), Names{});
}

TEST_F(ImportTest, CancellingEndsTheConverterAndForgetsTheRest) {
    const int running = m_queue->add(source("hangs.mp4"));
    const int waiting = m_queue->add(source("lobby.mp4"));
    begin(running);
    EXPECT_EQ(filesBelow("Scene").size(), 1U) << "the unfinished clip";
    m_queue->cancelAll();
    EXPECT_EQ(m_queue->find(waiting)->state, ImportState::cancelled);
    EXPECT_EQ(finish(running).state, ImportState::cancelled);
    EXPECT_EQ(filesBelow("Scene"), Names{});

    const int again = m_queue->add(source("hangs.mp4"));
    begin(again);
    const int unknown = m_queue->add(source("probe hangs.mp4"));
    const int next = m_queue->add(source("lobby.mp4"));
    m_queue->cancel(unknown);
    while (!m_queue->find(next)->facts) {
        m_loop.processEvents(true);
    }
    m_queue.reset(); // as the program ends
    EXPECT_EQ(filesBelow("Scene"), Names{});
}

TEST_F(ImportTest, ATakenNameIsKeptAndAnotherOneOffered) {
    for (const char* taken :
         {"LOBBY.OGG", "Lobby.ogv", "lobby-zoneinfo.BIN", "lobby-ZoneInfo.xml"}) {
        writeBytes(std::string("Scene/") + taken, "old");
        const ImportItem item = import("lobby.mp4");
        EXPECT_EQ(item.failure.kind, Failure::nameTaken) << taken;
        EXPECT_EQ(imports::failureText(item.failure), "a video \"lobby\" is in the scene already.");
        m_queue->keepBoth(item.id);
        EXPECT_EQ(finish(item.id).clip.name, "lobby 2.ogv");
        EXPECT_EQ(readBytes(std::string("Scene/") + taken), "old");
        int error = 0;
        for (const std::string& name : filesBelow("Scene")) {
            m_files.removeFile("Scene/" + name, error);
        }
    }
}

TEST_F(ImportTest, WhatIsReadableOfADamagedFileIsTakenOnDemand) {
    const int id = import("short.mp4").id;
    m_queue->importReadable(id);
    const ImportItem& item = finish(id);
    EXPECT_EQ(item.state, ImportState::done) << item.failure.details;
    EXPECT_EQ(item.clip.frameCount, 6);
}

TEST_F(ImportTest, AFolderThatRefusesFilesIsNamed) {
    for (const std::string operation : {"open", "replaceFile"}) {
        m_files.setRule(
            [operation](const support::Call& call) {
                const bool isClip = call.path.find("Scene") != call.path.npos;
                return isClip && call.operation == operation ? support::Fault::fail
                                                             : support::Fault::none;
            },
            EACCES);
        EXPECT_EQ(import("lobby.mp4").failure.kind, Failure::notWritable) << operation;
    }
    m_files.heal();
    EXPECT_EQ(filesBelow("Scene"), Names{});
}

TEST_F(ImportTest, ARemadeClipHasItsZonesAndTheOldOneStays) {
    using namespace zone_tests;
    writeBytes("Scene/clip.ogv", readBytes("good.ogv"));
    writeBytes("Scene/clip-ZoneInfo.xml", infoBytes({"Exit"}));
    const Names shapes(10, shapeBytes({{0, 0}, {64, 48}, {32, 24}}));
    writeBytes("Scene/clip-ZoneInfo.bin", zoneBytes("Exit", shapes));
    writeBytes("Scene/good.ogv", readBytes("good.ogv"));
    const Names before = filesBelow("Scene");

    const ImportItem item = finish(m_queue->addRemake("clip.ogv"));
    ASSERT_EQ(item.state, ImportState::done) << imports::failureText(item.failure);
    EXPECT_EQ(item.clip.name, "clip 2.ogv");
    const auto zones = zone::ZoneManager::create("Scene/clip 2", 10, true, zone::Scale{});
    ASSERT_TRUE(zones && zones->zoneCount() == 1);
    EXPECT_EQ(zones->getZoneName(0), "Exit");
    // The picture of 64 x 48 gets sides of 8.
    const zone::ZoneShape shape = *zones->zone(0)->shape(9);
    EXPECT_EQ(shape.points, (Points{{8, 0}, {72, 48}, {40, 24}}));
    EXPECT_EQ(readBytes("Scene/clip-ZoneInfo.bin"), zoneBytes("Exit", shapes));

    support::ClipSpec longer;
    longer.frames = 11;
    writeBytes("Scene/clip.ogv", support::makeClip(longer));
    const ImportItem differs = finish(m_queue->addRemake("clip.ogv"));
    EXPECT_EQ(differs.failure.kind, Failure::framesDiffer);
    writeBytes("Scene/good-ZoneInfo.xml", infoBytes({"Exit"})); // and no shapes
    EXPECT_EQ(finish(m_queue->addRemake("good.ogv")).failure.kind, Failure::zonesFailed);
    EXPECT_EQ(filesBelow("Scene").size(), before.size() + 4);
}

TEST(ImportNames, AreValidOnEverySystem) {
    const std::tuple<std::string, std::string> cases[] = {
        {"/a/lobby.final.mp4", "lobby.final"},
        {"/a/R&D <1>.mov", "R_D _1_"},
        {"/a/a:b|c?d*e\"f.mp4", "a_b_c_d_e_f"},
        {"/a/CON.mp4", "_CON"},
        {"/a/com1.x.mp4", "_com1.x"},
        {"/a/.hidden.mp4", "_hidden"},
        {"/a/ end. .mp4", "end"},
        {"/a/\xFF\n.mp4", "__"},
        {"/a/...mp4", "video"},
        {"/a/-dash.mp4", "-dash"},
        {"/a/Größe.mp4", "Größe"},
        {"/a/" + std::string(200, 'x') + ".mp4", std::string(96, 'x')},
    };
    for (const auto& [source, name] : cases) {
        EXPECT_EQ(imports::baseNameFor(source), name) << source;
    }
}

class ConverterTest : public support::TempFolderTest {
protected:
    void addPrograms(const std::string& folder, const std::string& end = "") {
        for (const char* name : {"/ffmpeg", "/ffprobe"}) {
            writeBytes(folder + name + end + platform::programSuffix(), "program");
        }
    }
    std::string found(const imports::ConverterPlaces& places) {
        std::string path = imports::findConverter(platform::nativeFileSystem(), places).ffmpeg;
        path = path.starts_with(m_folder.path()) ? path.substr(m_folder.path().size()) : path;
        std::replace(path.begin(), path.end(), '\\', '/');
        return path;
    }
    std::string at(const std::string& folder) { return m_folder.path() + folder; }
};

TEST_F(ConverterTest, IsFoundByAbsolutePathInTheseAndNoOtherPlaces) {
    for (const char* folder : {"chosen", "program", "path", "Scenes/A"}) {
        addPrograms(folder);
    }
    addPrograms("chosen", "-6");
    addPrograms(".");
    const std::string end = platform::programSuffix();
    writeBytes("lonely/ffmpeg" + end, "without a probe");
    const imports::ConverterPlaces all{at("chosen"), at("program"), {at("path")}, {}};
    EXPECT_EQ(found(all), "chosen/ffmpeg" + end);
    EXPECT_EQ(found({at("chosen/ffmpeg-6" + end), "", {}, {}}), "chosen/ffmpeg-6" + end);
    EXPECT_EQ(found({at("chosen/ffprobe" + end), "", {}, {}}), "chosen/ffmpeg" + end);
    EXPECT_EQ(found({at("missing"), at("program"), {at("path")}, {}}), "program/ffmpeg" + end);
    EXPECT_EQ(found({"", at("lonely"), {"", at("lonely"), at("path")}, {}}), "path/ffmpeg" + end);
    EXPECT_EQ(found({"path", "", {"", ".", "path", "./path"}, {}}), "") << "not absolute";
    EXPECT_EQ(found({"", "", {at("Scenes/A"), at("Scenes/A/../A")}, {at("Scenes/")}}), "");
}

} // namespace
