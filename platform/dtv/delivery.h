// The listener of the process, as the delivery of events knows it.
#pragma once

#include <DtvSvLibListener.h>

namespace dtv {

/// Events go to `listener` from now on, but none before it has its first owner. The reference is
/// weak.
void registerListener(DtvSvLibListener* listener);

/// For the listener's destructor: no event begins to be delivered to it any more. Does nothing when
/// another listener has taken its place.
void unregisterListener(const DtvSvLibListener* listener);

} // namespace dtv
