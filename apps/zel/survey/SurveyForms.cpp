#include "survey/SurveyForms.h"

#include <cmath>
#include <filesystem>

#include "ColourFile.h"
#include "GeodesyPlugin.h"
#include "Host.h"
#include "TextEdge.h"
#include "survey/SurveyFaults.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/CFileException.h"
#include "zelbase/units/Translator.h"
#include "zelbase/units/UnitDefinition.h"

namespace zel {
namespace {

constexpr int kColours = 14;         // of a table made by the extents
constexpr int kColoursBetween = 4;   // of a slice between two colours of another program's palette
constexpr double kMostFactor = 1e6;  // of a unit, and its inverse the least

std::string TranslatedUnit(int kind, const std::string& key, const std::string& name) {
  const Translator& translator = Translator::Instance();
  const std::string translated = translator.IsLanguageForeign() ? translator.GetUnitsString(unitsParamKeys[kind], key) : std::string();
  return translated.empty() ? name : translated;
}

void ReadUnit(const SurveySettings& settings, const UnitDefinition& catalogue, const std::string& item, int code, CZelUnitCnv& units) {
  const std::string key = settings.Text("Units", item);
  if (key.empty() || !catalogue.FileInitialised()) return;
  double factor = 0.0, offset = 0.0;
  std::string name, mnemonic;
  const bool usable = catalogue.GetGroupItemData(code, key, name, factor, offset, mnemonic) && factor >= 1.0 / kMostFactor &&
                      factor <= kMostFactor && std::abs(offset) <= kMostFactor;
  if (!usable) {
    ReportFault("Units", "the catalogue has no usable unit \"" + key + "\" for \"" + item + "\"", ToShownPath(catalogue.GetFileName()));
    return;
  }
  const int kind = CZelUnitCnv::ConvertFMTtoUNIT(code);
  units.SetUnit(kind, factor, offset, mnemonic, key, TranslatedUnit(kind, key, name));
}

bool OpenCatalogue(const SurveySettings& settings, UnitDefinition& catalogue) {
  std::string path = settings.File("Units", "Catalogue");
  std::error_code failed;
  if (!settings.Has("Units", "Catalogue") && std::filesystem::is_regular_file(SuiteFile(Translator::SECTION_UNITS), failed)) {
    path = SuiteFile(Translator::SECTION_UNITS);
  }
  if (path.empty()) return false;
  catalogue.SetErrorContext("Units");
  try {
    return catalogue.FileOpen(ToSuitePath(path), CFile::modeRead | CFile::shareDenyNone);
  } catch (const CFileException&) {
    ReportFile("Units", path, FileError::Read);
    return false;
  }
}

// False when the settings name no table, or one that does not read, which is reported.
bool ReadTable(const SurveySettings& settings, const std::string& item, ColorTable& table) {
  const std::string path = settings.File("Colours", item);
  if (path.empty()) return false;
  std::string reason;
  ColorTable read;
  if (!OpenColourFile(path, kColoursBetween, read, reason)) {
    ReportFault("Colours", reason, path);
    return false;
  }
  if (read.NumEntries() == 0) {
    ReportFault("Colours", "the table has no colours", path);
    return false;
  }
  table = read;
  return true;
}

// Not known when the settings name no system, or the one they name is not to be had, which is reported.
SurveyProjection ReadProjection(const SurveySettings& settings) {
  const std::string code = settings.Text("Coordinates", "System");
  if (code.empty()) return SurveyProjection();
  GeodesyPlugin plugin;
  std::unique_ptr<GeoCoordSys> system;
  if (plugin.Load("")) system = plugin.Select(ToTerminal(code, Encoding::Windows1252));
  std::string why = system == nullptr ? plugin.Reason() : "";
  double unit = 0.0;
  if (system != nullptr && (system->Kind() != GeoCoordSysKind::Projected || !system->GetLinearUnit(unit) || unit != 1.0)) {
    why = "\"" + code + "\" is no grid in metres";
  }
  if (why.empty()) return SurveyProjection(std::move(system));
  ReportFault("Coordinates", why, settings.Path());
  return SurveyProjection();
}

}  // namespace

void ReadTitle(const SurveySettings& settings, Survey& survey) {
  survey.title.title = settings.Text("Survey", "Title");
  survey.title.client = settings.Text("Survey", "Client");
  survey.title.vessel = settings.Text("Survey", "Vessel");
  survey.title.date = settings.Text("Survey", "Date");
  survey.title.datum = settings.Text("Survey", "Datum", "chart datum");
}

// The folder comes first: the translator takes its language from there, once.
void ReadLanguage(const SurveySettings& settings, Survey& survey) {
  const std::string folder = settings.Folder("Survey", "Common");
  if (!folder.empty()) UseCommonFolder(folder);
  const Translator& translator = Translator::Instance();
  survey.language = translator.GetLanguageID();
  if (!translator.IsLanguageForeign()) return;
  for (const SettingsItem& item : Items(translator.GetTranslatorIni(), Translator::SECTION_PLOT_FRIENDLY_NAMES)) {
    survey.words[item.key] = translator.GetPlotFriendlyNamesString(item.key);
  }
}

void ReadUnits(const SurveySettings& settings, Survey& survey) {
  survey.depthDecimals = settings.Whole("Units", "Depth decimals", survey.depthDecimals, 0, 6);
  UnitDefinition catalogue;
  const bool opened = OpenCatalogue(settings, catalogue);
  const bool asked = settings.Has("Units", "Depth") || settings.Has("Units", "Distance") || settings.Has("Units", "Volume");
  if (!opened && asked) ReportFault("Units", "there is no catalogue of units: metres are shown", settings.Path());
  ReadUnit(settings, catalogue, "Depth", CZelUnitCnv::FormatDepth, survey.units);
  ReadUnit(settings, catalogue, "Distance", CZelUnitCnv::FormatDistance, survey.units);
  ReadUnit(settings, catalogue, "Volume", CZelUnitCnv::FormatVolume, survey.units);
}

void ReadCoordinates(const SurveySettings& settings, Survey& survey) {
  const double rotation = settings.Number("Map", "Rotation", 0.0, -360.0, 360.0);
  survey.mapRotation = std::fmod(rotation + 360.0, 360.0);
  SurveyCoordinates& coordinates = survey.coordinates;
  coordinates.projection = ReadProjection(settings);
  coordinates.form = static_cast<CoordinateForm>(settings.Choice("Coordinates", "Form", {"grid", "degrees", "minutes", "seconds"}, 0));
  if (coordinates.form != CoordinateForm::Grid && !coordinates.projection.IsKnown()) {
    ReportFault("Coordinates", "without a \"System\" there are no geographic coordinates: those of the grid are shown", settings.Path());
    coordinates.form = CoordinateForm::Grid;
  }
  constexpr std::array<int, 4> usual = {0, 5, 3, 1};
  coordinates.decimals = settings.Whole("Coordinates", "Decimals", usual[static_cast<std::size_t>(coordinates.form)], 0, 9);
}

void ReadColours(const SurveySettings& settings, Survey& survey) {
  if (!ReadTable(settings, "Depth", survey.depthColours)) {
    const bool known = survey.extents.IsValid() && survey.extents.GetZDiff() > 0.0;
    survey.depthColours.SetRange(known ? -survey.extents.zMax : 0.0, known ? -survey.extents.zMin : 20.0, kColours, true, true);
  }
  if (!ReadTable(settings, "Difference", survey.differenceColours)) survey.differenceColours.GenerateDredgeDiffColorTable();
}

}  // namespace zel
