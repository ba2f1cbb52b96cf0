// A static object that is made on first use and never destroyed, so that code which runs while the
// program ends (the log writes its page then) can still rely on it.
//
//   static Immortal<Thing> thing;
//   return thing.value;
#pragma once

namespace platform {

template <typename T>
union Immortal {
    Immortal() : value() {}
    ~Immortal() {}
    Immortal(const Immortal&) = delete;
    Immortal& operator=(const Immortal&) = delete;

    T value;
};

} // namespace platform
