// Makes inputs that look like what a service sends, and changes them: records by the catalogue,
// with their fields, counts, sizes and texts at and beyond every boundary.
#pragma once

#include "records/input.h"
#include "records/texts.h"

namespace hostile {

/// A record of an event that is known, as long as it has to be or nearly.
Input shaped(Random& random);

/// Changes something of an input: its id, its size, a field, its place, its trace.
void change(Random& random, Input& input);

} // namespace hostile
