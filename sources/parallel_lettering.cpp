// Chunks of codes rendered by whichever thread claims them first, merged in
// code order by the calling thread, which also renders while it waits.
#include "sources/parallel_lettering.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/pg_ctrl.h"
#include "sources/letterer.h"

namespace {

constexpr uint32_t CodeCount = 0xFFFF;  // 0xFFFF itself is never a character
// Small enough that the calling thread, rendering a chunk of its own, comes
// back to the progress (and a cancel request) within milliseconds even at
// hundreds of pixels; large enough that claiming one costs next to nothing.
constexpr uint32_t ChunkCodes = 16;
constexpr uint32_t ChunkCount = (CodeCount + ChunkCodes - 1) / ChunkCodes;
// A thread more is worth its face's set-up only with this many codes to render.
constexpr uint32_t CodesPerThread = 256;

struct Chunk {
    std::vector<std::pair<uint16_t, std::unique_ptr<CGlyph>>> Glyphs;
    // A letterer's failure, and the code it failed at.
    std::exception_ptr Error;
    uint32_t ErrorCode = 0;
    bool Done = false;  // under the run's mutex
};

class CLetteringRun {
public:
    explicit CLetteringRun(const CFontFilter& filter) : Filter(filter), Chunks(ChunkCount) {}

    // Renders the next unclaimed chunk; false when none is left, the run
    // stops, or the letterer failed (it is not used again then).
    bool RenderNext(CLetterer& letterer) {
        if (Stop.load(std::memory_order_relaxed)) return false;
        const uint32_t index = Next.fetch_add(1, std::memory_order_relaxed);
        if (index >= ChunkCount) return false;
        Chunk& chunk = Chunks[index];
        bool ok = true;
        const uint32_t end = std::min(CodeCount, (index + 1) * ChunkCodes);
        std::unique_ptr<CGlyph> glyph;
        for (uint32_t code = index * ChunkCodes; code < end; ++code) {
            if (Stop.load(std::memory_order_relaxed)) break;
            if (Filter.IsExcluded(static_cast<uint16_t>(code))) continue;
            try {
                if (!glyph) glyph = std::make_unique<CGlyph>();
                if (letterer.MakeGlyph(*glyph, static_cast<char16_t>(code)))
                    chunk.Glyphs.emplace_back(static_cast<uint16_t>(code), std::move(glyph));
            } catch (...) {
                chunk.Error = std::current_exception();
                chunk.ErrorCode = code;
                ok = false;
                break;
            }
        }
        std::lock_guard<std::mutex> lock(Mutex);
        chunk.Done = true;
        Changed.notify_all();
        return ok;
    }

    bool IsDone(uint32_t index) {
        std::lock_guard<std::mutex> lock(Mutex);
        return Chunks[index].Done;
    }
    void WaitFor(uint32_t index) {
        std::unique_lock<std::mutex> lock(Mutex);
        Changed.wait(lock, [&] { return Chunks[index].Done; });
    }
    bool AnyUnclaimed() const { return Next.load(std::memory_order_relaxed) < ChunkCount; }

    // The chunk's progress steps and glyphs, exactly as a one-letterer loop
    // makes them; rethrows its letterer's failure at the code it failed at.
    void Merge(uint32_t index, CFontData& font) {
        Chunk& chunk = Chunks[index];
        auto next = chunk.Glyphs.begin();
        const uint32_t end = std::min(CodeCount, (index + 1) * ChunkCodes);
        for (uint32_t code = index * ChunkCodes; code < end; ++code) {
            g_pPgCtrl->StepProgress(1);
            if (chunk.Error && code == chunk.ErrorCode) std::rethrow_exception(chunk.Error);
            if (next != chunk.Glyphs.end() && next->first == code) {
                font.AddGlyph(std::move(next->second), next->first);
                ++next;
            }
        }
        chunk.Glyphs.clear();
        chunk.Glyphs.shrink_to_fit();
    }

    std::atomic<bool> Stop{false};

private:
    const CFontFilter& Filter;
    std::vector<Chunk> Chunks;
    std::atomic<uint32_t> Next{0};
    std::mutex Mutex;
    std::condition_variable Changed;
};

// Stops and joins the helpers however the merge ends: finished, cancelled
// (the thrown int of StepProgress) or failed.
class CHelpers {
public:
    explicit CHelpers(CLetteringRun& run) : Run(run) {}
    ~CHelpers() {
        Run.Stop.store(true);
        for (std::thread& t : Threads) t.join();
    }
    CHelpers(const CHelpers&) = delete;
    CHelpers& operator=(const CHelpers&) = delete;

    void Start(int count, const std::function<std::unique_ptr<CLetterer>()>& makeLetterer) {
        for (int i = 0; i < count; ++i) {
            try {
                Threads.emplace_back([this, &makeLetterer] {
                    std::unique_ptr<CLetterer> letterer;
                    // A face that will not open here leaves its chunks to the others.
                    try {
                        letterer = makeLetterer();
                    } catch (...) {
                        return;
                    }
                    while (Run.RenderNext(*letterer)) {
                    }
                });
            } catch (const std::system_error&) {
                break;  // no more threads to be had: the ones running do the work
            }
        }
    }

private:
    CLetteringRun& Run;
    std::vector<std::thread> Threads;
};

}  // namespace

int LetteringThreads(int requested, const CFontFilter& filter) {
    const int threads =
        requested > 0 ? requested : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    if (threads == 1) return 1;
    uint32_t candidates = 0;
    for (uint32_t code = 0; code < CodeCount; ++code)
        if (!filter.IsExcluded(static_cast<uint16_t>(code))) ++candidates;
    return std::max(1, std::min(threads, static_cast<int>(candidates / CodesPerThread)));
}

void LetterInParallel(int threads, CLetterer& first, const std::function<std::unique_ptr<CLetterer>()>& makeLetterer,
                      CFontData& font, const CFontFilter& filter) {
    CLetteringRun run(filter);
    CHelpers pool(run);
    pool.Start(threads - 1, makeLetterer);
    bool firstUsable = true;
    for (uint32_t index = 0; index < ChunkCount; ++index) {
        while (!run.IsDone(index)) {
            if (firstUsable && run.AnyUnclaimed()) {
                firstUsable = run.RenderNext(first);
                continue;
            }
            run.WaitFor(index);
        }
        run.Merge(index, font);
    }
}
