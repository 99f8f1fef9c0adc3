// The names of the suite's settings files. Neighbours: SectionNames.h and KeyTables.h, the names inside these files. They
// are opened with exactly the case given here.
#pragma once

#include <string>

// In front of each: the folder that the file lies in. DEFAULT_NAME is the suite's folder, below that of its maker;
// ACTIONS_DEF_FILENAME, ACTIONS_CUST_FILENAME and CDF_DEF_FILENAME are stems, to be completed.
//
// All are made before the first static object of a file that includes this header, so that a host's static initialiser
// may read them.
inline const std::string ZEL_DEF_FILENAME = "zelcore.ini";
inline const std::string CDF_DEF_FILENAME = "client";
inline const std::string UDF_DEF_FILENAME = "curuser.ini";
inline const std::string DATA_DEF_FILENAME = "DataDef.ini";
inline const std::string INTERFACE_DEF_FILENAME = "InterfaceDef.ini";
inline const std::string ATTRIB_DEF_FILENAME = "AttribDefV2.ini";
inline const std::string DEFAULT_NAME = "ZELCORE";
inline const std::string TRANS_DEF_FILENAME = "Transformations.ini";
inline const std::string PROJECTION_DEF_FILENAME = "Projections.ini";
inline const std::string ELLIPSOID_DEF_FILENAME = "Spheroids.ini";
inline const std::string FILETYPES_DEF_FILENAME = "FileTypes.ini";
inline const std::string TRANS_USR_FILENAME = "Transformations.usr";
inline const std::string PROJECTION_USR_FILENAME = "Projections.usr";
inline const std::string ELLIPSOID_USR_FILENAME = "Spheroids.usr";
inline const std::string T5Q_CFG_FILENAME = "T5QDistribution.ini";
inline const std::string ACTIONS_DEF_FILENAME = "DefaultActions";
inline const std::string ACTIONS_CUST_FILENAME = "CustomActions";
inline const std::string TRANSLATOR_INI_FILENAME = "Translator.ini";
inline const std::string DISPLAY_MANAGER_INI_FILENAME = "DisplayManager.ini";
inline const std::string USER_ACCESS_LEVELS_INI_FILENAME = "UserAccessLevels.ual";
inline const std::string USER_ACCESS_LEVELS_BAK_FILENAME = "UserAccessLevels.bak";
inline const std::string TUI_DEF_FILENAME = "TernaxUI.ini";
inline const std::string ZELCORE_RELEASE_NOTES_FILENAME = "ZELCORE release notes.pdf";
inline const std::string REMOTE_ASSISTANCE_FILENAME = "VESOK Support.exe";
inline const std::string REMOTE_ASSISTANCE_FILENAME_TV = "TeamViewer.exe";
