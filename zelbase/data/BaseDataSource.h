// The interface of a source of data blocks that are found by their time, between the modules that produce data and those
// that use it. Neighbour: XYZDataSource.h, a stream of points.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class CAttributeMap;  // both are other modules' and only handed through
class CDataBlock;
class CDataId;

// Everything may be overridden and nothing has to be: an operation that a source does not have answers false, 0, 0.0, null,
// or does nothing, and leaves its arguments as they are. Only the options act. Times are in milliseconds since 1970-01-01
// 00:00:00 UTC. What an option means, and what an argument without a name here means, is told by the module that derives.
//
// A source is destroyed through this base. Copying copies the options. No locks of its own.
class ZELBASE_API BaseDataSource {
 public:
  BaseDataSource() = default;
  BaseDataSource(const BaseDataSource&) = default;
  BaseDataSource& operator=(const BaseDataSource&) = default;
  virtual ~BaseDataSource() = default;

  // ---- Options: a mask of 32 bits, none set at first ----

  // True when any bit of `mask` is set, so never for 0.
  bool CheckOption(int mask) const { return (m_options & mask) != 0; }
  virtual void SetOption(int mask) { m_options |= mask; }
  virtual void ResetOption(int mask) { m_options &= ~mask; }

  // ---- Life and set-up ----

  virtual void Init() {}
  virtual bool DataBlockSetup(unsigned short, const CDataId&) { return false; }
  virtual bool InitDataElement(int, unsigned short, unsigned short, unsigned short, unsigned short, unsigned short) { return false; }
  virtual bool DataBlockInit() { return false; }
  virtual bool Allocate(long) { return false; }

  // ---- Interpolation ----

  virtual bool Interpolate(CDataBlock&) { return false; }
  virtual bool Interpolate(double /*time*/, unsigned short, unsigned short, double& /*value*/, unsigned short&) { return false; }
  virtual bool InterpolateHeading(double /*time*/, unsigned short, unsigned short, double, double, double& /*value*/, unsigned short&) {
    return false;
  }
  virtual bool FindIntervalStartEnd(double /*time*/, unsigned short, unsigned short, double&, double&, double&, double&, unsigned short&) {
    return false;
  }

  // ---- Adding ----

  virtual bool AddDataBlock(const CDataBlock&) { return false; }
  virtual bool AddClockSyncDataBlock(const CDataBlock&) { return false; }
  virtual bool UpdateDataBlock(CDataBlock&) { return false; }
  virtual bool UpdateData(double, const CAttributeMap&) { return false; }
  virtual bool HandleAttribsChange(const CDataId&) { return false; }

  // ---- Reading ----

  virtual bool GetDataBlock(int, CDataBlock&) { return false; }
  virtual bool GetDataBlock(int, double&, CDataBlock&) { return false; }
  virtual bool GetDataTimeStatus(int, double&, unsigned short&) { return false; }
  virtual bool GetLastElementInternal() { return false; }
  virtual CDataBlock* GetInternalDataBlock() { return nullptr; }
  virtual void CopyDataBlock(CDataBlock&) const {}

  // ---- Buffer ----

  virtual long GetBufSize() const { return 0; }
  virtual long GetNumElements() const { return 0; }
  virtual bool GetBufferStatus(double&, unsigned short&) const { return false; }
  virtual bool SetBufferStatus(double, unsigned short) { return false; }

  // ---- Identity ----

  virtual bool GetDataId(CDataId&) const { return false; }
  virtual CDataId* GetDataIdPtr() { return nullptr; }

  // ---- Time ----

  virtual bool GetTimeSpan(double&, double&) { return false; }
  virtual double GetFirstElementTime() { return 0.0; }
  virtual double GetLastElementTime() { return 0.0; }
  virtual bool GetLastAddTime(double&) const { return false; }
  virtual bool GetLastAddTimeLocal(double&) const { return false; }

  // ---- Attributes of interpolation ----

  virtual void SetInterpolAttribs(bool, double) {}
  virtual void SetExtrapolationAttribs(bool, double) {}
  virtual bool GetInterpolAttribs(double&) { return false; }
  virtual bool GetExtrapolationAttribs(double&) { return false; }

  // ---- Notification and errors ----

  virtual void NotifySubscribers() {}
  virtual void ReportError(double, bool, int) {}
  virtual int GetError() { return 0; }

 private:
  int m_options = 0;
};
