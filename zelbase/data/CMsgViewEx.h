// The colours and the font of a view of messages. Neighbours: MSGTEXTATTRIBS.h, the font; CDataInfoEx.h, the same of a data item.
#pragma once

#include "zelbase/data/MSGTEXTATTRIBS.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value. A colour has red in its low byte, then green, then blue; all are 0, black, in a new one. Several threads may read one
// object; whoever changes it must be alone.
class ZELBASE_API CMsgViewEx {
 public:
  CMsgViewEx();
  CMsgViewEx(const CMsgViewEx& other);
  CMsgViewEx& operator=(const CMsgViewEx& other);
  virtual ~CMsgViewEx();

  unsigned int GetMsgInfoColor() const { return m_infoColor; }
  void SetMsgInfoColor(unsigned int color) { m_infoColor = color; }
  unsigned int GetMsgWarningColor() const { return m_warningColor; }
  void SetMsgWarningColor(unsigned int color) { m_warningColor = color; }
  unsigned int GetMsgErrorColor() const { return m_errorColor; }
  void SetMsgErrorColor(unsigned int color) { m_errorColor = color; }
  unsigned int GetMsgCriticalColor() const { return m_criticalColor; }
  void SetMsgCriticalColor(unsigned int color) { m_criticalColor = color; }
  unsigned int GetMsgBkColor() const { return m_bkColor; }
  void SetMsgBkColor(unsigned int color) { m_bkColor = color; }
  const MSGTEXTATTRIBS& GetMsgTxtAttr() const { return m_textAttribs; }
  void SetMsgTxtAttr(const MSGTEXTATTRIBS& attribs) { m_textAttribs = attribs; }

 private:
  unsigned int m_infoColor = 0;
  unsigned int m_warningColor = 0;
  unsigned int m_errorColor = 0;
  unsigned int m_criticalColor = 0;
  unsigned int m_bkColor = 0;
  MSGTEXTATTRIBS m_textAttribs;
};
