#include "zelbase/concurrency/ParallelProcessor.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "zelbase/concurrency/NameThread.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformThreads.h"

namespace {

constexpr int kBelowNormal = -1;

}  // namespace

// The threads of one run. They are waited for at the end of its scope, however that comes.
class ParallelProcessor::RunningThreads {
 public:
  RunningThreads() = default;
  ~RunningThreads() { Wait(); }
  RunningThreads(const RunningThreads&) = delete;
  RunningThreads& operator=(const RunningThreads&) = delete;

  // False when there is no thread to be had.
  bool Start(process_item& item) {
    try {
      std::unique_ptr<PlatformThread> thread =
          PlatformService<PlatformThreads>::Current().CreateSuspended([&item] { ThreadProc(&item); }, kBelowNormal, 0);
      if (!thread) return false;
      m_threads.push_back(std::move(thread));
    } catch (const std::bad_alloc&) {
      return false;  // a thread still suspended ends without having run
    }
    m_threads.back()->Resume();
    return true;
  }

  // From the last made to the first.
  void Wait() {
    for (; !m_threads.empty(); m_threads.pop_back()) m_threads.back()->Wait(PlatformThread::kNoLimit);
  }

 private:
  std::vector<std::unique_ptr<PlatformThread>> m_threads;
};

ParallelProcessor::~ParallelProcessor() {
  for (;;) {
    std::unique_ptr<Processor> last;  // goes after the lock has been given back
    const LockGuard guard(m_itemsLock);
    if (m_items.empty()) return;
    last.reset(m_items.back().processor);
    m_items.pop_back();
  }
}

void ParallelProcessor::AddProcessor(Processor* processor) {
  if (processor == nullptr || processor == this) return;
  const LockGuard guard(m_itemsLock);
  const auto isIt = [processor](const process_item& item) { return item.processor == processor; };
  if (std::any_of(m_items.begin(), m_items.end(), isIt)) return;
  m_items.push_back({this, processor, false});
}

bool ParallelProcessor::Initialize() {
  Processor::Initialize();
  for (std::size_t i = 0; Processor* const processor = ProcessorAt(i); ++i) {
    if (processor->Initialize()) continue;
    SetErrorMessage(processor->ErrorMessage());
    return false;
  }
  return true;
}

bool ParallelProcessor::Process() {
  const std::vector<process_item*> items = Items();
  if (items.empty()) return true;
  RunOnThreads(items);
  const auto failed = std::find_if(items.begin(), items.end(), [](const process_item* item) { return !item->result; });
  if (failed == items.end()) return true;
  SetErrorMessage((*failed)->processor->ErrorMessage());
  return false;
}

// Kept: one thread for each but the last, all at once. A pool, or a limit by cores, would let processors that wait for each
// other wait for ever.
void ParallelProcessor::RunOnThreads(const std::vector<process_item*>& items) {
  std::vector<process_item*> here;
  RunningThreads threads;
  for (process_item* const item : items) {
    if (item == items.back() || !threads.Start(*item)) here.push_back(item);
  }
  try {
    for (process_item* const item : here) ProcessItem(*item);
  } catch (...) {
    Stop();
    throw;
  }
}

// Kept: a sum, not a mean; each processor reports its share of the whole.
double ParallelProcessor::GetProgress() const {
  double sum = 0.0;
  for (std::size_t i = 0; const Processor* const processor = ProcessorAt(i); ++i) sum += processor->GetProgress();
  return ClampProgress(sum);
}

void ParallelProcessor::Stop() {
  Processor::Stop();
  for (std::size_t i = 0; Processor* const processor = ProcessorAt(i); ++i) processor->Stop();
}

void ParallelProcessor::ProcessItem(process_item& item) {
  if (item.processor == nullptr) return;
  item.result = item.processor->Process();
  if (item.processor->IsStopped()) item.result = true;  // Kept: whoever was stopped, even by itself, is successful
  if (!item.result && item.owner != nullptr) item.owner->Stop();
}

unsigned int ParallelProcessor::ThreadProc(void* item) {
  NameThread(PlatformThreads::kCallingThread, "ParallelProcessor::ThreadProc");
  if (item != nullptr) ProcessItem(*static_cast<process_item*>(item));
  return 0;
}

std::vector<ParallelProcessor::process_item*> ParallelProcessor::Items() {
  const LockGuard guard(m_itemsLock);
  std::vector<process_item*> items;
  for (process_item& item : m_items) items.push_back(&item);
  return items;
}

Processor* ParallelProcessor::ProcessorAt(std::size_t index) const {
  const LockGuard guard(m_itemsLock);
  return index < m_items.size() ? m_items[index].processor : nullptr;
}
