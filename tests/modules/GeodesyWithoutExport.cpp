// A geodesy plug-in that lacks its export, for the tests of the loader: a C++ name, a function nobody sees, other cases.
#define PLUGIN_EXPORT __attribute__((visibility("default")))

PLUGIN_EXPORT void RegisterCoordSys();
PLUGIN_EXPORT void RegisterCoordSys() {}  // not extern "C"

extern "C" PLUGIN_EXPORT void registerCoordSys() {}
extern "C" PLUGIN_EXPORT void RegisterCoordSystem() {}
