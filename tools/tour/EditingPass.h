// Script of an author's pass through all screens.
#pragma once

namespace tour {

class Script;

/// Opens the first scene listed, adds a branch with two actions, draws a zone over its video, saves
/// both and exits, with a screenshot of each screen.
void writeEditingPass(Script& script);

} // namespace tour
