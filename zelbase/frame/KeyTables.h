// The tables of key names in the suite's settings files. Neighbours: FileNames.h and SectionNames.h, the files and
// sections; FileTypes.h, which searches fileTypeKeys.
//
// The place of a key in its table is its number, from 0, and callers index the tables by number: a row is neither moved nor
// removed, and new rows go to the end. Keys are looked up exactly, case included. Which table serves in which section
// is up to the modules that read the files, beyond what stands beside a table here.
//
// All are made before the first static object of a file that includes this header, so that a host's static initialiser
// may read them.
#pragma once

#include <string>

inline const std::string permissionKeys[5] = {"Vessels", "Commports", "Network", "Presentations", "ProjectDescription"};

inline const std::string exportKeys[1] = {"EsriAsciiGrid"};

inline const std::string fileTypeSubKeys[27] = {
    "generic", "dredge-state", "Geoid-Model", "Backscatter-Model", "SVP", "RTE", "RLN", "Cube-Main-Model",
    "Cube-Node-Model", "Cube-Lowest-Model", "Cube-Highest-Model", "Design", "Level", "SNP_Model", "SSS_Model", "CPL", "WPT",
    "bottom-type", "BottomClass-Model", "HeavyOil", "SEL", "LEL", "GRD", "RKP", "Geoid-Model-Grid", "dredge-diff",
    "RTE_MARKER"};

inline const std::string guidanceKeys[11] = {
    "RunlineNav", "RouteNav", "WaypointNav", "Designmodel", "WorkAreas", "RestrictedAreas", "VesselPlacement",
    "CutterDredge", "DredgeInstruction", "ObjectDistance", "ObjectPlacement"};

inline const std::string pathKeys[24] = {
    "Programs", "General", "CurrentProject", "LogData", "Projects", "UserGeneral", "Backup", "Symbols", "ProjectsCommon",
    "Obsolete", "ProgramsData", "GeoidModels", "Reports", "LogDataBackup", "Multimedia", "ReportDefinitions", "TB_Buttons",
    "SonarTargets", "Release Notes", "Team Viewer", "Camera Images", "Standard 3D Objects", "Manuals", "TripRegistration"};

inline const std::string vesselKeys[8] = {
    "MultiObjects", "MultiMax", "RelativeObjects", "RelativeMax", "DynRelObjects", "DynRelMax", "Simulation",
    "DisableLogging"};

inline const std::string loggingKeys[21] = {
    "ZELCOREFormat", "DtmFormat", "WinFrogFormat", "EM3000Format", "XYZFormat", "ProductionFormat", "DredgeTrackFormat",
    "DxfFormat", "XTFFormat", "BackscatterFormat", "BoracietActivityReportFormat", "U5QFormat", "TideStation", "SDSFormat",
    "HeavyOilDtmFormat", "IntervalFormat", "FauFormat", "GsfFormat", "PipeRouteFormat", "XYZBsFormat", "UKOOAFormat"};

inline const std::string networkKeys[3] = {"Support", "RemoteNum", "Presentations"};

inline const std::string spheroidKeys[4] = {"DataBase", "Name", "SemiMajor", "EccSqrd"};

inline const std::string projDescKeys[5] = {"ProjectName", "ProjectNumber", "ProjectTask", "ClientName", "ContractorName"};

inline const std::string transParamKeys[12] = {
    "Name", "Description", "Source", "Target", "ShiftX", "ShiftY", "ShiftZ", "RotX", "RotY", "RotZ", "ScaleFactor", "File"};

inline const std::string coordsystemKeys[15] = {
    "BM Database", "BM Group key", "BM CoordSystem key", "BM Ellipsoid key", "BM Datum key", "BM Linear unit key",
    "BM projection name", "System group name", "System name", "Dtf name", "Unit name", "Ellipsoid name", "CoordSys type",
    "GeoidModel name", "GeoidModelFile name"};

inline const std::string projectionParamKeys[23] = {
    "File", "Type", "Name", "LatOrigin", "LonOrigin", "FalseEast", "FalseNorth", "ScaleConst", "1stParallel", "2ndParallel",
    "FalseLat", "UTM-Zone", "Hemisphere", "FalseNorthOrigin", "BasicLat", "BasicLon", "SkewAngle", "InitialAzimuth",
    "LatTrueScale", "CentralParallel", "EastPrjCentre", "NorthPrjCentre", "HomSkewAngle"};

inline const std::string GeoidmodelTypeKeys[20] = {
    "Receiver", "Manual", "DeMin", "Grid Model(Satellite coordinates)", "RDNAPTRANS2004", "Belgium hBG03/xyGridLb72",
    "Sweden", "US State Plane", "HARN", "OSTN02", "OSGM02 - GB", "OSGM02 - RoI", "OSGM02 - NI", "RDNAPTRANS2008",
    "Denmark DVR90", "Grid Model(Grid coordinates)", "Quasigeoid EGG97", "Null Model", "EGM2008", "Norway"};

// The kinds of unit, by the numbers of CZelUnitCnv; also the groups of the catalogue of units.
inline const std::string unitsParamKeys[24] = {
    "No Units", "System Units", "Speed Units", "Distance Units", "Depth Units", "Volume Units", "Density Units",
    "Velocity Units", "Production Units", "Height Units", "Pressure Units", "Power Units", "Revolutions Units",
    "Weight Units", "Pitch Units", "Roll Units", "Acceleration Units", "Angular Rate Units", "Delivery Units",
    "Angular Units", "Area Units", "Temperature Units", "Paper Units", "Force Units"};

inline const std::string formatParamKeys[10] = {
    "Geog Format", "Geog Decimals", "Grid Decimals", "Speed Decimals", "Distance Decimals", "Depth Decimals",
    "Coordinate Format", "Density Decimals", "Pressure Decimals", "Weight Decimals"};

inline const std::string appParamKeys[2] = {"Definition", "Configuration"};

inline const std::string customerKeys[2] = {"Customer Name", "Customer ID"};

// The keys of a section "Checksum" (FileObject::CHECKSUM_SECTION).
inline const std::string checksumKeys[2] = {"Checksum", "Integrity"};

inline const std::string coordsysbackupKeys[6] = {
    "BM Ellipsoid", "BM Datum", "BM Linear unit", "BM Angle unit", "BM System group", "BM System"};

// Kept: mixes kinds, as the file of geodesy does: stems of sections and files, the key of its checksum, the value of its
// version and the key for that.
inline const std::string geoFileKeys[7] = {
    "BMUserGeoDatabase", "zelusergeobase", "BMGeocalc", "zelgeodatabase", "Checksum", "1.0.1", "GeodesyVersion"};

// The file types of the suite. FileTypes.h goes from a number to its key and back.
inline const std::string fileTypeKeys[109] = {
    "Language", "AppDef", "DeviceDriver", "AppConfig", "VesselContour", "Spheroid", "Transformation", "Projection", "Units",
    "Formats", "AcqCompDef", "ElectronicChart", "PresentationDef", "Project", "Route", "RunLine", "Waypoint",
    "VesselConfig", "EventLogData", "RawLogData", "PresentationConfig", "NumericPages", "EventDef", "System", "DxfDrawing",
    "ColorTable", "DigitalTerrainModel", "DtmFilter", "SVProfile", "ZELCORERaw", "EM3000Raw", "PolyClip", "TinModel",
    "Stations", "TideFile", "TideStation", "ProfileTemplate", "DesignModel", "VolumeComp", "XYZClean", "RemoteConfig",
    "MbeamCal", "AccessDatabase", "ReportCSV", "ReportXML", "ReportType", "AsciiText", "CmapFilter", "FileSet", "JpegImage",
    "DisplaySupport", "ContourDefinition", "DesignModel3D", "ExportConfig", "WorkArea", "RestrictedArea", "DredgeTrackRaw",
    "UserDef", "PlacementPoints", "3DStudioModel", "ColorMap", "CraneConfiguration", "XTFRaw", "DredgeInstruction",
    "DredgeStatusConfig", "BoracietActivityReport", "AlarmMap", "ModuleConfig", "AsciiImportCfg", "ImportConfig", "U5QRaw",
    "EsriShapes", "UserMap", "SDSRaw", "GeoTiffImage", "CubeModel", "Coordinatesystem", "SZRaw", "UserInterfaceProfile",
    "ExcludedAreas", "DraughtTable", "HopperTable", "VesselSetup", "WireframeDrawing", "Bitmap", "PlotDxfExport", "Reports",
    "FauRaw", "GsfRaw", "WaveSound", "Video", "Text", "ProjectBitmap", "PDFFiles", "PNGImages", "ZELSystem", "BSBChart",
    "USGSDEMFile", "CMapDatabase", "OpenGIS_KML", "OpenGIS_KMZ", "SonarTargets", "STGeoTiffImage", "ImageFile",
    "CamJpegImage", "CamBitmap", "Objects3D", "ObjectPlacement", "UKOOAP190"};

// The programs of the suite.
inline const std::string programKeys[42] = {
    "Master", "Remote", "AcqComp", "Presentation", "Configuration", "ProjectSel", "Replay", "Explorer", "Validation",
    "GridModelling", "3D-Modelling", "DtmEditor", "ConvertXYZ", "DeviceTest", "EndAreaVolumes", "3DViewer", "Plot",
    "TideModule", "DataFileConv", "PositionEditor", "LogsysImport", "ExportUtil", "PrintACF", "QuickProfilePlot",
    "BatchPlot", "GeoCalculator", "FileExchange", "UpdGridDesignModel", "T5QDistribution", "ImportUtil", "SonarSwath",
    "ClientControlCenter", "USBLCalibration", "BottomClassification", "UserAccounts", "AccessLevels", "Reporter",
    "LiteView", "ConvertS57toCMap", "Calibration", "Simulator", "GuidanceEditor"};

// The view types, which name the sections of a displays file (DisplaysFile.h).
inline const std::string viewTypeKeys[48] = {
    "PlanView", "NumericsView", "RawDataView", "TSeriesView", "HelmsmanView3D", "MsgView", "StatusView", "MultibeamQC",
    "Scatterplot", "ProfileView", "EditorView", "CalcView", "TideView", "ViewModel3D", "PositionEditView",
    "MultiBeamEditView", "MBEFilterView", "TimeBasedEditView", "LineBasedEditView", "CommSettingsView", "View3D",
    "SonarView", "SonarViewProc", "ZelDaemonView", "TideStationView", "RemoteView", "ExplorerView", "VideoView",
    "ManualInputView", "DredgeView", "Dekdienst", "DeviceControl", "MultiBeamPipeEditView", "ViewDtm3D", "MbeamVideoView",
    "CompassView", "MBEditView3D", "CubeView", "KelvosondOfflineView", "SinglebeamPlanView", "MultiBeamEditView3D",
    "IntervalLogView", "LiteView", "BCView3D", "EditView3D", "ObstacleAvoidanceView", "GuidanceEditView", "CableProfileView"};
