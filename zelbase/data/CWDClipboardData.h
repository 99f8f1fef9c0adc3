// Moves the suite's payloads to the clipboard and back. Neighbours: CCF_DataInfo.h, CCF_DispInfo.h and CCF_HDROP.h, the payloads;
// zelbase/platform/COleDataSource.h and COleDataObject.h, the two ends; docs/data-identifiers.md has the bytes.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/FORMATETC.h"
#include "zelbase/platform/ZelBaseApi.h"

class CObject;
class COleDataObject;
class COleDataSource;

// A list of clipboard formats, by index:
//
// | Index | Format | Payload |
// |---|---|---|
// | 0 | 15, the platform's CF_HDROP | CCF_HDROP |
// | 1 | "CF_WD_DATAINFO" | CCF_DataInfo |
// | 2 | "CF_WD_DISPINFO" | CCF_DispInfo |
// | 3 | "CF_WD_STRINGDATA" | any; this library has none |
//
//   COleDataSource source;
//   CWDClipboardData::Get().SetData(&source, &payload, 1);
//   source.SetClipboard();
//
// One thread at a time, the one that has the windows.
class ZELBASE_API CWDClipboardData {
 public:
  // The four formats above.
  CWDClipboardData();
  virtual ~CWDClipboardData();

  // The one object, made at first use and never destroyed.
  static CWDClipboardData& Get();

  // Registers the name, or finds it, and appends its number under a new index, which is the result; also when it is in the list.
  int AddFormat(const std::string& name);

  // The number at that index; 0 for an index that is none.
  unsigned short GetClipboardFormat(int index) const;

  // Whether the object offers any format of the list; with an index, whether it offers that one. False for a null object.
  bool IsDataAvailable(COleDataObject* dataObject) const;
  bool IsDataAvailable(COleDataObject* dataObject, int index) const;

  // Serialises the payload and offers its bytes under the format of that index; `details` may be null. Does nothing for a null
  // source or payload and an index that is none. What the payload's Serialize throws passes, and nothing is offered then.
  void SetData(COleDataSource* dataSource, CObject* payload, int index, FORMATETC* details = nullptr);

  // Lets the payload read the bytes offered under the format of that index; for dropped files, adds their names to a CCF_HDROP, each
  // cut at 259 characters. False for a null object or payload, and true for everything else: also when there is no such data, or no
  // such index, and the payload stays as it was. What the payload's Serialize throws passes.
  bool GetData(COleDataObject* dataObject, CObject* payload, int index);

 private:
  bool IsValidFormat(unsigned short format) const;

  std::vector<unsigned short> m_formats;
};
