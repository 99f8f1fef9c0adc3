// A language module that fails at every number but one, for LanguageModulesTest.cpp.
#include <stdexcept>

extern "C" __attribute__((visibility("default"))) const char* ZelNumberedText(int number) {
  if (number == 12035) throw number;  // anything may be thrown
  if (number != 12034) throw std::runtime_error("no such text");
  return "Unbekannter Fehler";
}
