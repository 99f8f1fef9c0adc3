// A language module as a translator's own compiler would make it, for LanguageModulesTest.cpp: it includes nothing of the
// library.
extern "C" __attribute__((visibility("default"))) const char* ZelNumberedText(int number) {
  switch (number) {
    case 12034: return "Unbekannter Fehler";
    case 12039: return "";
    case 4711: return "Kein eingebauter Text";
    default: return nullptr;
  }
}
