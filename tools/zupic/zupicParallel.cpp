// zupic -j N: lines of standard input through N threads, results written in
// input order. The reading thread cuts the input into batches; each worker
// thread runs its own line worker (made on that thread, so that the
// library's per-thread strings and caches stay with it) over whole batches;
// the reading thread writes finished batches out in order. At most a few
// batches per thread are in flight, so memory stays bounded on any input.
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "tools/zupic/zupicCommands.h"

namespace zupic {

namespace {

constexpr size_t kBatchLines = 4096;
constexpr size_t kBatchesPerThread = 3;

struct Batch {
  std::string text;            // the lines, each followed by '\n'
  std::vector<size_t> starts;  // where each line starts in `text`
  std::string out;             // results, one a line
  std::string err;             // messages for standard error
  bool matched = true;
  bool done = false;
};

class Pipeline {
 public:
  Pipeline(unsigned threads, const std::function<LineWorker()>& makeWorker) {
    for (unsigned i = 0; i < threads; ++i) {
      workers_.emplace_back([this, &makeWorker] { work(makeWorker()); });
    }
  }
  ~Pipeline() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      closed_ = true;
    }
    ready_.notify_all();
    for (std::thread& worker : workers_) worker.join();
  }

  void submit(const std::shared_ptr<Batch>& batch) {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      queue_.push_back(batch);
    }
    ready_.notify_one();
  }

  void waitFor(Batch& batch) {
    std::unique_lock<std::mutex> lock(mutex_);
    finished_.wait(lock, [&] { return batch.done; });
  }

 private:
  void work(const LineWorker& worker) {
    for (;;) {
      std::shared_ptr<Batch> batch;
      {
        std::unique_lock<std::mutex> lock(mutex_);
        ready_.wait(lock, [&] { return closed_ || !queue_.empty(); });
        if (queue_.empty()) return;
        batch = queue_.front();
        queue_.pop_front();
      }
      for (size_t line = 0; line < batch->starts.size(); ++line) {
        const size_t start = batch->starts[line];
        const size_t end =
            line + 1 < batch->starts.size() ? batch->starts[line + 1] - 1 : batch->text.size() - 1;
        batch->matched &= worker(batch->text.data() + start, end - start, batch->out, batch->err);
      }
      {
        std::lock_guard<std::mutex> lock(mutex_);
        batch->done = true;
      }
      finished_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable ready_;
  std::condition_variable finished_;
  std::deque<std::shared_ptr<Batch>> queue_;
  bool closed_ = false;
  std::vector<std::thread> workers_;
};

// Writes the oldest batch once it is done; false when a line did not match.
bool writeOldest(Pipeline& pipeline, std::deque<std::shared_ptr<Batch>>& inFlight) {
  Batch& batch = *inFlight.front();
  pipeline.waitFor(batch);
  std::fwrite(batch.out.data(), 1, batch.out.size(), stdout);
  if (!batch.err.empty()) {
    std::fflush(stdout);
    std::fwrite(batch.err.data(), 1, batch.err.size(), stderr);
  }
  const bool matched = batch.matched;
  inFlight.pop_front();
  return matched;
}

}  // namespace

bool forEachLineInParallel(unsigned threads, const std::function<LineWorker()>& makeWorker) {
  bool allMatched = true;
  char* line = nullptr;
  size_t capacity = 0;
  ssize_t length = 0;
  {
    Pipeline pipeline(threads, makeWorker);
    std::deque<std::shared_ptr<Batch>> inFlight;
    auto batch = std::make_shared<Batch>();
    auto send = [&] {
      pipeline.submit(batch);
      inFlight.push_back(batch);
      batch = std::make_shared<Batch>();
      while (inFlight.size() > kBatchesPerThread * threads) {
        allMatched &= writeOldest(pipeline, inFlight);
      }
    };
    while ((length = getline(&line, &capacity, stdin)) >= 0) {
      while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) --length;
      batch->starts.push_back(batch->text.size());
      batch->text.append(line, static_cast<size_t>(length));
      batch->text.push_back('\n');
      if (batch->starts.size() == kBatchLines) send();
    }
    if (!batch->starts.empty()) send();
    while (!inFlight.empty()) allMatched &= writeOldest(pipeline, inFlight);
  }
  std::free(line);
  std::fflush(stdout);
  return allMatched;
}

}  // namespace zupic
