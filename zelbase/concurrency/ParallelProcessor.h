// A processor that runs several others at once, a thread for each, and stops them all when one fails. Neighbours:
// Processor.h, its base; ThreadPool.h for many small tasks on a few threads.
#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/Processor.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// The work is divided as the caller has divided it into processors: there is no pool and no limit by the number of cores,
// so that processors may wait for each other.
//
//   ParallelProcessor all;
//   for (...) all.AddProcessor(new GridStrip(...));      // each reports its share of the whole, 0.25 for one of four
//   if (all.Initialize() && !all.Process()) Show(all.ErrorMessage());
//
// One run at a time. Progress and Stop may be asked for from any thread meanwhile. A processor added during a run is stopped
// and asked for progress with the others, and takes part from the next run on. Not copyable.
class ZELBASE_API ParallelProcessor : public Processor {
 public:
  // One processor and what came of it.
  struct ZELBASE_API process_item {
    ParallelProcessor* owner = nullptr;
    Processor* processor = nullptr;
    bool result = false;
  };

  ParallelProcessor() = default;

  // Deletes the processors, the last one first.
  ~ParallelProcessor() override;

  // Takes `processor` over. Null is ignored, and so are this object itself and a processor that is here already. The
  // progress parent of neither is touched.
  void AddProcessor(Processor* processor);

  // Itself, and then each processor in order. At the first that fails it returns false with that one's error message;
  // the later ones are not initialised.
  bool Initialize() override;

  // Runs all but the last processor on threads of their own, below ordinary priority, and the last on the calling thread;
  // returns when all are done. True without processors, and when each has succeeded or was stopped; otherwise false, with
  // the error message of the first, in their order, that failed by itself.
  //
  // A processor whose thread cannot be made runs on the calling thread, after all threads have been started, in order,
  // before the last one. An exception that leaves a processor ends the process on a thread of its own; on the calling thread
  // it stops the others, waits for them, and reaches the caller; what was still to run there does not.
  //
  // A ParallelProcessor within another fails unseen by it: its own failure has stopped it, and whoever is stopped counts as
  // successful. Its message stays with it; an owner that needs to know asks it.
  bool Process() override;

  // The sum of the progress of all processors, clamped to 0 to 1; 0 without any, and when the sum is not a number. Its own
  // progress and parts are not read.
  double GetProgress() const override;

  // Stops itself and then each processor, in order.
  void Stop() override;

  // Runs one item: its result is that of Process, or true when the processor is stopped by then; when that is false, the
  // owner is stopped, with all its processors. An item without a processor is left alone; one without an owner stops nobody.
  static void ProcessItem(process_item& item);

  // The same for a thread: tells its name, and returns 0. `item` is a process_item*; null is ignored.
  static unsigned int ThreadProc(void* item);

 private:
  class RunningThreads;

  std::vector<process_item*> Items();
  void RunOnThreads(const std::vector<process_item*>& items);
  Processor* ProcessorAt(std::size_t index) const;

  mutable Locker m_itemsLock;
  std::deque<process_item> m_items ZELBASE_GUARDED_BY(m_itemsLock);  // items stay where they are when others come
};
