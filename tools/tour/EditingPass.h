// One pass of an author through all screens, as a script.
#pragma once

namespace tour {

class Script;

/// Opens the first scene on offer, adds a branch with two actions, draws a zone over its video,
/// saves both and leaves. A picture of each screen is taken on the way.
void writeEditingPass(Script& script);

} // namespace tour
