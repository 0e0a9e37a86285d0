#include "cli/build_command.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <thread>

#include "cli/build_inputs.h"
#include "cli/build_runner.h"
#include "cli/build_state.h"
#include "cli/convert_options.h"
#include "cli/option_words.h"
#include "cli/options.h"
#include "cli/recipe.h"
#include "core/general_exception.h"

namespace fs = std::filesystem;

namespace {

struct BuildOptions {
    fs::path Recipe = "glyphwright.toml";
    int Jobs = 0;
    bool Force = false;
    bool DryRun = false;
    bool Quiet = false;
};

BuildOptions ParseBuildOptions(const std::vector<std::string>& args) {
    BuildOptions o;
    bool haveRecipe = false;
    std::set<std::string> seen;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i].rfind("-", 0) != 0) {
            if (haveRecipe) throw CUsageError("build takes one recipe");
            haveRecipe = true;
            o.Recipe = args[i];
            continue;
        }
        // -j N and -jN, as make and ninja take them.
        std::vector<std::string> jobs;
        if (args[i].rfind("-j", 0) == 0) {
            jobs = {"--jobs=" + args[i].substr(2)};
            if (args[i] == "-j") {
                if (i + 1 >= args.size()) throw CUsageError("-j needs a value");
                jobs[0] += args[++i];
            }
        }
        std::size_t at = 0;
        const OptionWord word = ReadOptionWord(jobs.empty() ? args : jobs, jobs.empty() ? i : at, {"--jobs"},
                                               {"--force", "--dry-run", "--quiet"});
        if (!seen.insert(word.Name).second) throw CUsageError(word.Name + " is given twice");
        if (word.Name == "--jobs") {
            char* end = nullptr;
            long n = std::strtol(word.Value.c_str(), &end, 10);
            if (word.Value.empty() || *end != '\0' || n < 1 || n > 256)
                throw CUsageError("--jobs takes 1 to 256, not '" + word.Value + "'");
            o.Jobs = static_cast<int>(n);
        } else {
            (word.Name == "--force" ? o.Force : word.Name == "--dry-run" ? o.DryRun : o.Quiet) = true;
        }
    }
    if (o.Jobs == 0) o.Jobs = std::max(1u, std::thread::hardware_concurrency());
    return o;
}

// Where convert's arguments hold the --threads option (not a value that reads
// "--threads", as --chars may), or their size when they do not.
std::size_t ThreadsOptionAt(const std::vector<std::string>& args) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--threads") return i;
        const auto& table = ConvertOptionTable();
        const bool takesValue =
            args[i] == "--settings" || std::any_of(table.begin(), table.end(), [&](const ConvertOption& o) {
                return args[i] == o.Name && o.Value != OptionValue::Flag;
            });
        if (takesValue) ++i;
    }
    return args.size();
}

// The settings that decide a font's bytes: its options, and the program
// that turns them into the font.
uint64_t SettingsHash(const RecipeFont& font) {
    std::string text = GLYPHWRIGHT_VERSION;
    // The same bytes at any thread count.
    const std::size_t threads = ThreadsOptionAt(font.Expanded);
    for (std::size_t i = 0; i < font.Expanded.size(); ++i)
        if (i != threads && i != threads + 1) text += '\0' + font.Expanded[i];
    return HashText(text);
}

// The cores are one budget: the fonts built at once share them, so that a
// build never renders on more threads than the machine has cores (one a
// font at least). A font's own `threads` is the most it takes.
void ShareThreads(std::vector<BuildJob>& jobs, int parallel) {
    if (jobs.empty()) return;
    const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    const int running = std::min(parallel, static_cast<int>(jobs.size()));
    const int share = std::max(1, cores / running);
    for (BuildJob& job : jobs) {
        const std::size_t given = ThreadsOptionAt(job.Args);
        if (given == job.Args.size()) {
            job.Args.insert(job.Args.end(), {"--threads", std::to_string(share)});
        } else if (given + 1 < job.Args.size()) {
            // A value convert refuses stays as it is, for convert's own message.
            std::string& value = job.Args[given + 1];
            char* end = nullptr;
            const long n = std::strtol(value.c_str(), &end, 10);
            if (*end == '\0' && n > share) value = std::to_string(share);
        }
    }
}

// Fonts often share a file (one face, one text of the game): each is read
// once per build, through `stamped`.
FontState CurrentState(const RecipeFont& font, const fs::path& folder, std::map<fs::path, FileStamp>& stamped) {
    auto stamp = [&](const fs::path& path) {
        auto at = stamped.find(path);
        return at != stamped.end() ? at->second : stamped.emplace(path, StampFile(path)).first->second;
    };
    FontState s;
    s.SettingsHash = SettingsHash(font);
    s.Output = stamp((folder / font.Options.OutputPath).lexically_normal());
    for (const auto& in : ConversionInputs(font.Options, folder)) s.Inputs.push_back(stamp(in));
    return s;
}

// A font's messages under its line; a long run of warnings is cut short
// (convert run alone lists them all).
constexpr int ShownWarnings = 10;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string Indented(const std::string& text) {
    std::vector<std::string> lines = Lines(text);
    int total = 0;
    for (const auto& line : lines) total += line.rfind("Warning: ", 0) == 0;
    std::string out;
    int warnings = 0;
    for (const auto& line : lines) {
        bool warning = line.rfind("Warning: ", 0) == 0;
        if (warning && ++warnings > ShownWarnings) continue;
        out += "  " + line + "\n";
        if (warning && warnings == ShownWarnings && total > ShownWarnings)
            out += "  (" + std::to_string(total - ShownWarnings) + " more warning lines; convert alone shows them)\n";
    }
    return out;
}

// One block per font, written at once, so that parallel fonts never mix.
void Report(const std::string& text) {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

std::string Quoted(const std::string& a) {
    if (!a.empty() && a.find_first_of(" \t'\"\\$`!*?[]{}()<>|&;#~") == std::string::npos) return a;
    std::string q = "'";
    for (char c : a) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// What a build does: the fonts to convert and the state the run starts from.
struct BuildPlan {
    std::vector<BuildJob> Jobs;
    std::vector<std::size_t> JobFont;  // the recipe's font of each job
    std::vector<FontState> Before;     // each font's inputs and output as found
    BuildState Next;                   // the state to save, filled as fonts finish
    int UpToDate = 0;
};

// Stage 1: compares every font with the saved state; those unchanged are up
// to date, the rest become jobs (only listed on a dry run).
BuildPlan PlanBuild(const Recipe& recipe, const BuildState& previous, const BuildOptions& options) {
    BuildPlan plan;
    plan.Before.resize(recipe.Fonts.size());
    std::map<fs::path, FileStamp> stamped;
    for (std::size_t i = 0; i < recipe.Fonts.size(); ++i) {
        const RecipeFont& font = recipe.Fonts[i];
        plan.Before[i] = CurrentState(font, recipe.Folder, stamped);
        fs::path out = plan.Before[i].Output.Path;
        auto old = previous.find(out);
        if (!options.Force && plan.Before[i].Output.Hash != 0 && old != previous.end() && old->second == plan.Before[i]) {
            plan.Next[out] = old->second;
            ++plan.UpToDate;
            if (!options.Quiet) Report("up to date  " + font.Label + "\n");
            continue;
        }
        if (old != previous.end()) plan.Next[out] = old->second;
        plan.Jobs.push_back({font.Args});
        plan.JobFont.push_back(i);
        if (options.DryRun && !options.Quiet) {
            std::string command = "glyphwright-cli convert";
            for (const auto& a : font.Args) command += " " + Quoted(a);
            Report("would build " + font.Label + "\n" + Indented(command));
        }
    }
    return plan;
}

struct BuildCounts {
    int Built = 0, Failed = 0, Canceled = 0;
    bool Finished = true;  // false when Ctrl-C stopped the build
};

// Stage 2: runs the jobs, reporting each font as it ends and keeping the
// state of those built.
BuildCounts RunPlan(const Recipe& recipe, BuildPlan& plan, const BuildOptions& options) {
    // A recipe names its output folders; they are made as a build tool would.
    for (std::size_t f : plan.JobFont) {
        std::error_code ec;
        fs::create_directories(plan.Before[f].Output.Path.parent_path(), ec);
    }
    ShareThreads(plan.Jobs, options.Jobs);
    BuildCounts counts;
    counts.Finished = RunBuildJobs(plan.Jobs, options.Jobs, recipe.Folder, [&](std::size_t job, const BuildJobResult& r) {
        const RecipeFont& font = recipe.Fonts[plan.JobFont[job]];
        fs::path out = plan.Before[plan.JobFont[job]].Output.Path;
        plan.Next.erase(out);
        if (r.Status == 0) {
            ++counts.Built;
            // The inputs as they were read: a file changed meanwhile rebuilds next time.
            FontState s = plan.Before[plan.JobFont[job]];
            s.Output = StampFile(out);
            plan.Next[out] = s;
            if (!options.Quiet) Report("built       " + font.Label + "\n" + Indented(r.Messages));
        } else if (r.Status == 130) {
            ++counts.Canceled;
            if (!options.Quiet) Report("cancelled   " + font.Label + "\n");
        } else {
            ++counts.Failed;
            Report("failed      " + font.Label + "\n" + Indented(r.Messages));
        }
    });
    return counts;
}

// Stage 3: the summary line, and the exit status of the whole build.
int ReportBuild(const BuildPlan& plan, const BuildCounts& c, const BuildOptions& options) {
    int notRun = static_cast<int>(plan.Jobs.size()) - c.Built - c.Failed - c.Canceled;
    if (!options.Quiet || c.Failed > 0 || !c.Finished) {
        std::string summary = "build: " + std::to_string(c.Built) + " built, " + std::to_string(plan.UpToDate) +
                              " up to date, " + std::to_string(c.Failed) + " failed";
        if (!c.Finished) summary += ", " + std::to_string(c.Canceled + notRun) + " cancelled";
        Report(summary + "\n");
    }
    if (!c.Finished) return 130;
    return c.Failed > 0 ? 1 : 0;
}

}  // namespace

int RunBuildCommand(const std::vector<std::string>& args) {
    InstallBuildInterruptHandler();
    BuildOptions options;
    Recipe recipe;
    try {
        options = ParseBuildOptions(args);
        recipe = LoadRecipe(options.Recipe);
    } catch (const CRecipeError& e) {
        std::fprintf(stderr, "glyphwright-cli: %s\n", e.what());
        return 2;
    }

    const fs::path statePath = StatePathFor(recipe.Path);
    const BuildState previous = LoadBuildState(statePath);
    BuildPlan plan = PlanBuild(recipe, previous, options);
    if (options.DryRun) {
        if (!options.Quiet)
            Report("build: " + std::to_string(plan.Jobs.size()) + " to build, " + std::to_string(plan.UpToDate) +
                   " up to date (dry run, nothing written)\n");
        return 0;
    }
    const BuildCounts counts = RunPlan(recipe, plan, options);
    if (plan.Next != previous) {
        try {
            SaveBuildState(statePath, plan.Next);
        } catch (const CGeneralException& e) {
            std::fprintf(stderr, "%s\n", e.Message.c_str());
            return 1;
        }
    }
    return ReportBuild(plan, counts, options);
}
