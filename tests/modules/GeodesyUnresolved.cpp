// A geodesy plug-in that needs a function which nobody has, for the tests of the loader. As a language module it is as incomplete.
extern "C" void ZelFunctionOfALibraryThatIsNotThere();

extern "C" __attribute__((visibility("default"))) void RegisterCoordSys() { ZelFunctionOfALibraryThatIsNotThere(); }
extern "C" __attribute__((visibility("default"))) const char* ZelNumberedText(int) { return "not to be had"; }
