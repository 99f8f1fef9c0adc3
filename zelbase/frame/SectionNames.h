// The names of sections in the suite's settings files. Neighbours: FileNames.h, the files; KeyTables.h, the keys. They are
// looked up exactly, case included.
#pragma once

inline constexpr char HEADER_SECTION[] = "Header";
inline constexpr char FILES_SECTION[] = "Files";
inline constexpr char LANGUAGE_SECTION[] = "Language";
inline constexpr char STARTUP_SECTION[] = "Startup";
inline constexpr char DATA_PATH_SECTION[] = "DataPath";
inline constexpr char USER_PROFILE_SECTION[] = "UserProfile";
inline constexpr char PERMISSION_SECTION[] = "Permissions";
inline constexpr char PROGRAMS_SECTION[] = "Programs";
inline constexpr char VESSEL_SECTION[] = "Vessel";
inline constexpr char NETWORK_SECTION[] = "Network";
inline constexpr char DEVICES_SECTION[] = "Devices";
inline constexpr char COMPUTATIONS_SECTION[] = "Computations";
inline constexpr char VIEWS_SECTION[] = "Views";
inline constexpr char LOGGING_SECTION[] = "Logging";
inline constexpr char EXPORT_SECTION[] = "Export formats";
inline constexpr char GUIDANCE_SECTION[] = "Guidance";
inline constexpr char CUSTOMER_SECTION[] = "Customer";
inline constexpr char TOOL_SECTION[] = "Tools";
inline constexpr char SPHEROID_SECTION[] = "Spheroid";
inline constexpr char TRANSFORMATION_SECTION[] = "Transformation";
inline constexpr char PROJECTION_SECTION[] = "Projection";
inline constexpr char UNITS_SECTION[] = "Units";
inline constexpr char FORMATS_SECTION[] = "Formats";
inline constexpr char APPLICATION_SECTION[] = "Application";
inline constexpr char COORDSYSTEM_BACKUP_SECTION[] = "CoordSystem Backup";
inline constexpr char COORDSYSTEM_SECTION[] = "CoordSystem";
