// A geodesy plug-in that has nothing, for the tests of the loader.
extern "C" __attribute__((visibility("default"))) void RegisterCoordSys() {}
