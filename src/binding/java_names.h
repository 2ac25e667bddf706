// The names of the Java side's packages, and the descriptors made of them.
#pragma once

#define SERVICE_PACKAGE "tenrik/service/dtvserver"
#define VALUE_PACKAGE SERVICE_PACKAGE "/type"
/// The package of a kind of events: "notify", "request", "response".
#define EVENT_PACKAGE(kind) SERVICE_PACKAGE "/events/" kind

/// The descriptor of a class of the value package.
#define VALUE_TYPE(name) "L" VALUE_PACKAGE "/" #name ";"
#define STRING_TYPE "Ljava/lang/String;"
#define SURFACE_TYPE "Landroid/view/Surface;"
