// What both programs use of the Java classes.
#pragma once

#include "runner/rounds.h"

#include <jni.h>

#include <functional>
#include <string>

namespace bench {

/// tenrik.bench.Variants.
jclass variantsClass();

/// The VM's name, version and architecture.
std::string vmName();

/// Loads the bridge from a file. Gives up when that fails.
void loadBridge(const std::string& file);

/// Has Java count the events from now on.
void installCounting();

/// What has been counted: the events, and the sum of one field of each.
Arrived arrivedEvents();

/// Has Java describe each event, while `work` runs. The last one: all its fields and those of its
/// objects, or an empty text.
std::string describeEvent(const std::function<void()>& work);

/// Makes a proxy with a method of Variants, a local reference.
jobject makeProxy(const char* method);

/// Makes the loops over the commands of a proxy: a CommandLoop, a global reference.
jobject makeCommandLoop(jobject proxy);

/// A loop in Java: its method gets the number of calls, and answers how many went well.
Variant loopVariant(const std::string& name, jobject loop, const char* method);

} // namespace bench
