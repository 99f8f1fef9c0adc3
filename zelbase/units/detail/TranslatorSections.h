// The sections of a translation file. Internal to the library: as plain characters they may be read until the very end of
// the process. Neighbour: zelbase/units/Translator.h, which gives them to hosts as texts.
#pragma once

namespace zelbase::detail {

inline constexpr char kDisplayManagerSection[] = "DisplayManager.ini";
inline constexpr char kDefaultActionsSection[] = "DefaultActions[xxx].ini";  // Kept: the last "]" of a line ends a head
inline constexpr char kAttribDefV2Section[] = "AttribDefV2.ini";
inline constexpr char kPlotFriendlyNamesSection[] = "PlotFriendlyNames.ini";
inline constexpr char kFileTypesSection[] = "FileTypes.ini";
inline constexpr char kErrorMessagesSection[] = "ErrorMessages.ini";
inline constexpr char kEventsSection[] = "Events.ini";
inline constexpr char kTransformationsSection[] = "Transformations.ini";
inline constexpr char kUnitsSection[] = "Units.uni";
inline constexpr char kDataDefSection[] = "DataDef.ini";
inline constexpr char kUserMapSymbolsSection[] = "UserMapSymbols";  // not the name of a file

}  // namespace zelbase::detail
