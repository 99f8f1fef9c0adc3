// Errors: reported from anywhere into one list, heard of by a reporter, read again by whoever shows them.
#include <cstdio>

#include "zelbase/errors/ErrorReporterBase.h"
#include "zelbase/errors/GenericError.h"
#include "zelbase/errors/GlobalErrorList.h"

class Lamp : public ErrorReporterBase {
 public:
  void Report(const Error& error) override { std::printf("lamp: %s\n", error.Format().c_str()); }
};

int main() {
  GlobalErrorList& list = GlobalErrorList::Get();
  Lamp lamp;
  list.AddReporter(&lamp);
  list.Insert(GenericError("no signal", "COM3, 5 s", "Gyro"), "Drivers");
  list.Insert(GenericError("disk nearly full"));
  list.RemoveReporter(&lamp);

  list.Lock();
  for (bool more = list.FirstContext(); more; more = list.NextContext()) {
    for (int i = 0; i < list.NumErrors(false); ++i) {
      std::printf("%s: %s: %s\n", list.CurrentContext().c_str(), list[i].Type().c_str(), list[i].Format().c_str());
    }
  }
  list.Unlock();
  return 0;
}

// Prints:
//   lamp: no signal
//   lamp: disk nearly full
//   Drivers: Gyro: no signal
//   General: General Error: disk nearly full
