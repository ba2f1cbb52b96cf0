// The part of the editing run that is about drafts: two sessions as in the two editors, on a clock
// that runs 20 times as fast. Everything lies in the working directory. Edits are numbered; their
// number is the name of a branch or zone.
#pragma once

namespace faults {

/// Edits and now and then saves until this process ends, whatever is left of earlier runs first.
/// Prints "scene NUMBER" or "zones NUMBER" once the disk holds that edit and, when it is in a
/// draft, "age MS": how long ago by that clock the first edit was that no draft had before.
[[noreturn]] void editWithDrafts();
/// Prints "KIND NUMBER" for both: the newest edit that saved files or drafts bring back; and for
/// "versions" and "damaged" how many earlier versions there are, and how many cannot be read.
void printRecovered();

} // namespace faults
