// Steps, gestures and listeners of the history of edits, on a model of three numbers.
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "edit/History.h"
#include "edit/OneOf.h"

namespace {

using Model = std::array<int, 3>;

/// Puts a value into one cell; a series of them in one gesture is kept as one.
struct Put {
    std::size_t cell;
    int value;
    void apply(Model& model) { std::swap(model.at(cell), value); } // throws for a wrong cell
    void revert(Model& model) noexcept { std::swap(model[cell], value); }
    [[nodiscard]] std::vector<std::size_t> changes() const { return {cell}; }
    [[nodiscard]] static std::size_t bytes() { return 100; }
    [[nodiscard]] bool absorb(const Put& next) const { return next.cell == cell; }
};
struct Reverse {
    void apply(Model& model) { std::swap(model[0], model[2]); }
    void revert(Model& model) noexcept { std::swap(model[0], model[2]); }
    [[nodiscard]] static std::vector<std::size_t> changes() { return {0, 2}; }
    [[nodiscard]] static std::size_t bytes() { return 1; }
};
/// As if memory ran out for the redo.
struct Once {
    int calls = 0;
    void apply(Model&) {
        if (++calls > 1) {
            throw std::bad_alloc();
        }
    }
    void revert(Model&) noexcept {}
    [[nodiscard]] static std::vector<std::size_t> changes() { return {1}; }
    [[nodiscard]] static std::size_t bytes() { return 1; }
};
struct Edits {
    using Model = ::Model;
    using Change = std::size_t;
    using Label = std::string;
    using Operation = edit::OneOf<Model, Change, Put, Reverse, Once>;
};
using History = edit::History<Edits>;
using Notices = std::vector<std::vector<std::size_t>>;

class HistoryTest : public testing::Test {
protected:
    Model m_model{1, 2, 3};
    History m_history{m_model};
    Notices m_notices;
    edit::Subscription m_token =
        m_history.observe([this](const auto& changes) { m_notices.push_back(changes); });
};

TEST_F(HistoryTest, AGestureIsOneStepAndToldOnce) {
    auto gesture = m_history.begin("drag");
    for (int value = 10; value < 20; ++value) {
        gesture.run(Put{1, value});
    }
    m_history.run("inner", Put{2, 5}); // joins the open gesture
    EXPECT_FALSE(m_history.undo());
    EXPECT_TRUE(m_notices.empty());
    gesture.announce();
    gesture.run(Put{2, 6});
    gesture.announce();
    gesture.commit();
    EXPECT_EQ(m_notices, (Notices{{1, 2}, {2}, {}}));
    EXPECT_EQ(m_history.size(), 1U);
    EXPECT_EQ(m_history.bytes(), 200U) << "changes of one cell in a row are kept as one";
    EXPECT_EQ(*m_history.undoLabel(), "drag");
    EXPECT_TRUE(m_history.undo());
    EXPECT_EQ(m_model, (Model{1, 2, 3}));
    EXPECT_TRUE(m_history.redo());
    EXPECT_EQ(m_model, (Model{1, 19, 6}));
    m_history.undo();
    m_history.run("put", Put{0, 9});
    EXPECT_EQ(m_history.bytes(), 100U) << "what was undone is gone";
}

TEST_F(HistoryTest, WhatIsNotCommittedIsTakenBack) {
    m_history.run("put", Put{0, 4});
    m_history.undo();
    {
        auto outer = m_history.begin("outer");
        outer.run(Put{1, 8});
        {
            auto inner = m_history.begin("inner");
            inner.run(Put{1, 9});
            inner.run(Reverse{});
        }
        EXPECT_EQ(m_model, (Model{1, 8, 3}));
        EXPECT_THROW(outer.run(Put{3, 0}), std::out_of_range);
    }
    EXPECT_EQ(m_model, (Model{1, 2, 3}));
    {
        auto shown = m_history.begin("shown");
        shown.run(Put{1, 8});
        shown.announce();
        m_notices.clear();
    }
    EXPECT_EQ(m_notices, (Notices{{1}})) << "who heard of the 8 hears that it is gone";
    m_history.begin("empty").commit();
    EXPECT_TRUE(m_history.redo()) << "nothing was done since the undo";
    EXPECT_EQ(m_model, (Model{4, 2, 3}));
    EXPECT_EQ(m_history.size(), 1U);

    auto cut = m_history.begin("cut");
    cut.run(Put{1, 8});
    m_notices.clear();
    m_history.clear({2}); // the 8 belongs to the new contents
    m_history.run("put", Put{0, 5});
    cut.run(Put{0, 6});
    cut.announce();
    cut.cancel();
    EXPECT_EQ(m_model, (Model{5, 8, 3}));
    EXPECT_EQ(m_notices, (Notices{{2}, {0}}));
    EXPECT_TRUE(m_history.undo());

    auto two = m_history.begin("two");
    two.run(Put{0, 7});
    two.run(Once{});
    two.commit();
    m_history.undo();
    EXPECT_THROW(m_history.redo(), std::bad_alloc);
    EXPECT_EQ(m_model, (Model{4, 8, 3}));
}

TEST(HistoryNotices, EveryListenerHearsOfTheChangesInTheirOrder) {
    Model model{};
    auto history = std::make_unique<History>(model);
    Notices later;
    const edit::Subscription editor = history->observe([&](const auto& changes) {
        if (changes == std::vector<std::size_t>{0}) {
            history->run("put", Put{1, 1});
            history->run("put", Put{2, 1});
        } else if (changes.empty()) {
            history.reset();
        }
    });
    const edit::Subscription reader =
        history->observe([&](const auto& changes) { later.push_back(changes); });
    history->run("put", Put{0, 1});
    EXPECT_EQ(later, (Notices{{0}, {1, 2}}));
    history->clear({});
    EXPECT_EQ(history, nullptr);
    EXPECT_EQ(later, (Notices{{0}, {1, 2}, {}}));
}

TEST(HistoryLimits, TheOldestStepsGoFirst) {
    struct Case {
        edit::Limits limits;
        std::size_t kept;
    };
    for (const auto& [limits, kept] : {Case{{5, 10000, 1}, 5}, Case{{1000, 250, 1}, 2},
                                       Case{{1000, 250, 4}, 4}, Case{{3, 0, 10}, 10}}) {
        Model model{};
        History history(model, limits);
        for (int value = 1; value <= 20; ++value) {
            history.run("put", Put{0, value});
        }
        EXPECT_EQ(history.size(), kept);
        EXPECT_EQ(history.bytes(), kept * 100);
        while (history.undo()) {
        }
        EXPECT_EQ(model[0], 20 - static_cast<int>(kept));
    }
}

TEST(Observers, ComeAndGoWhileTheyAreTold) {
    edit::Observers<int> observers;
    std::string called;
    std::optional<edit::Subscription> self;
    std::optional<edit::Subscription> later;
    std::optional<edit::Subscription> added;
    self = observers.add([&](int) {
        called += 'a';
        self.reset();
        later.reset();
        added = observers.add([&](int) { called += 'c'; });
    });
    later = observers.add([&](int) { called += 'b'; });
    observers.notify(1);
    EXPECT_EQ(called, "a");
    observers.notify(2);
    EXPECT_EQ(called, "ac");

    auto held = std::make_unique<edit::Observers<>>();
    const edit::Subscription first = held->add([&] { held.reset(); });
    const edit::Subscription second = held->add([&] { called += 'd'; });
    held->notify();
    EXPECT_EQ(called, "acd") << "those that were to be called still are";
}

} // namespace
