// kelvm-bench: functions of the library in ticks of the time stamp counter an element, next to what a user would call
// instead.
#include "comparison.hpp"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <stdexcept>

namespace {

using namespace bench;
using harness::Function;

constexpr int bar_length = 1024; // the bar is for calls of at least this length

constexpr const char* usage =
    R"(usage: kelvm-bench [options]
  --function NAME    one function (may be repeated)
  --family NAME      the functions of a family (may be repeated)
  --all              every function (the default)
  --build LIST       sse41, avx2, avx512 or all (the default), separated by commas; those this processor runs
  --length LIST      elements a call (4,16,1024,1000000); complex functions get half of those from 1024 on
  --range LO:HI      arguments of the first source, uniform; each family has a range of its own
  --special V:N      N percent of the first source's elements are V: nan, inf, 0...
  --rounds N         batches of each contender (40)
  --show-peers       show every contender, not only the best peer that counts
  --loops            also loops that the compiler vectorises by calling functions of registers: of kelvm_simd and others
  --no-peers         measure our functions alone
  --json FILE        write all figures
  --libraries DIR    where the builds lie, each in a directory of its name
)";

struct Options {
  std::vector<std::string> functions, families;
  std::vector<std::string> builds;
  std::vector<int> lengths = {4, 16, 1024, 1000000};
  std::optional<Range> range;
  Special special;
  int rounds = 40;
  bool show_peers = false, measure_peers = true, loops = false;
  std::string json, libraries = KELVM_BUILDS, peers = KELVM_PEER_MODULES;
};

struct BadOption : std::runtime_error {
  using runtime_error::runtime_error;
};

std::vector<std::string> split(const std::string& list, char at) {
  std::vector<std::string> words(1);
  for (char c : list)
    if (c == at)
      words.emplace_back();
    else
      words.back() += c;
  return words;
}

template <class T> T number(const std::string& word) {
  T value{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc{} || end != word.data() + word.size()) throw BadOption("no number: " + word);
  return value;
}

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    const auto value = [&]() -> std::string {
      if (++i >= argc) throw BadOption(option + " wants a value");
      return argv[i];
    };
    if (option == "--function")
      options.functions.push_back(value());
    else if (option == "--family")
      options.families.push_back(value());
    else if (option == "--all")
      continue;
    else if (option == "--build") {
      for (const std::string& build : split(value(), ',')) {
        if (build == "all")
          options.builds.assign(std::begin(sets), std::end(sets));
        else if (rank_of(build) < int(std::size(sets)))
          options.builds.push_back(build);
        else
          throw BadOption("no such build: " + build);
      }
    } else if (option == "--length") {
      options.lengths.clear();
      for (const std::string& length : split(value(), ',')) {
        options.lengths.push_back(number<int>(length));
        if (options.lengths.back() < 1) throw BadOption("no length: " + length);
      }
    } else if (option == "--range") {
      const std::vector<std::string> bounds = split(value(), ':');
      if (bounds.size() != 2) throw BadOption("--range wants LO:HI");
      options.range = Range{number<double>(bounds[0]), number<double>(bounds[1])};
      if (!(options.range->lo < options.range->hi)) throw BadOption("--range wants LO below HI");
    } else if (option == "--special") {
      const std::vector<std::string> words = split(value(), ':');
      if (words.size() != 2) throw BadOption("--special wants VALUE:PERCENT");
      options.special = {number<double>(words[0]), number<int>(words[1])};
      if (options.special.percent < 0 || options.special.percent > 100) throw BadOption("no percentage: " + words[1]);
    } else if (option == "--rounds") {
      options.rounds = number<int>(value());
      if (options.rounds < 1) throw BadOption("--rounds wants a count");
    } else if (option == "--show-peers")
      options.show_peers = true;
    else if (option == "--loops")
      options.loops = true;
    else if (option == "--no-peers")
      options.measure_peers = false;
    else if (option == "--json")
      options.json = value();
    else if (option == "--libraries")
      options.libraries = value();
    else if (option == "--help") {
      std::cout << usage;
      std::exit(0);
    } else
      throw BadOption("unknown option: " + option);
  }
  if (options.builds.empty()) options.builds.assign(std::begin(sets), std::end(sets));
  return options;
}

std::vector<Function> chosen(const Options& options) {
  if (options.functions.empty() && options.families.empty())
    return {harness::all_functions().begin(), harness::all_functions().end()};
  std::vector<Function> functions;
  for (const std::string& name : options.functions) {
    const Function* function = harness::find_function(name);
    if (!function) throw BadOption("no function of that name: " + name);
    functions.push_back(*function);
  }
  for (const std::string& family : options.families) {
    const std::size_t before = functions.size();
    for (const Function& function : harness::all_functions())
      if (function.family == family) functions.push_back(function);
    if (functions.size() == before) throw BadOption("no family of that name: " + family);
  }
  return functions;
}

/// One build on this machine.
struct Build {
  std::string name;
  harness::Library library;
};

struct Result {
  Function function;
  Ranges ranges;
  std::vector<int> lengths;
  std::vector<Entry> entries;
};

/// Long complex arrays are half as long: the same bytes, in the same cache.
std::vector<int> lengths_for(const Function& function, const std::vector<int>& lengths) {
  std::vector<int> result = lengths;
  if (function.complex_source() || function.complex_destination())
    for (int& length : result)
      if (length >= bar_length) length /= 2;
  return result;
}

Result measure(const Function& function, const Options& options, const std::vector<Build>& builds,
               const std::vector<PeerModules>& peers) {
  Result result{function, default_ranges(function), lengths_for(function, options.lengths), {}};
  if (options.range) result.ranges.first = *options.range;

  std::vector<std::unique_ptr<Contender>> contenders;
  for (const Build& build : builds)
    if (auto ours = our_contender(build.library, build.name, function)) contenders.push_back(std::move(ours));
  if (options.measure_peers)
    for (const PeerModules& modules : peers)
      for (auto& peer : modules.contenders(function)) contenders.push_back(std::move(peer));

  {
    Data data(function, result.ranges, 16384);
    for (const auto& contender : contenders) {
      Entry entry{contender->name, contender->set, contender->ours, contender->naive, 0, false, {}};
      entry.ulp = std::max(contender->claimed_ulp, measured_ulp(function, data, *contender));
      entry.counts = !entry.ours && accurate_enough(function, *contender, entry.ulp);
      result.entries.push_back(entry);
    }
  }
  for (int length : result.lengths) {
    Data data(function, result.ranges, length, options.special);
    const Call call = data.call(length);
    const int rounds = length <= 100000 ? options.rounds : std::max(3, options.rounds / 8);
    const auto timings = interleaved(int(contenders.size()), rounds, [&](int c, long calls) {
      return contenders[c]->batch(call, data.elements(), calls);
    });
    for (std::size_t c = 0; c < timings.size(); ++c) result.entries[c].timings.push_back(timings[c]);
  }
  return result;
}

struct Tally {
  double logs = 0;
  int count = 0, met = 0, judged = 0;
};
using Tallies = std::map<std::pair<std::string, std::string>, Tally>; // by family and build, at one length

void show(const Result& result, const Options& options, double per_ns, std::map<int, Tallies>& tallies) {
  for (std::size_t l = 0; l < result.lengths.size(); ++l) {
    const double length = result.lengths[l];
    const bool at_bar = options.lengths[l] >= bar_length;
    for (const Entry& ours : result.entries) {
      if (!ours.ours) continue;
      const Timing timing = ours.timings[l];
      const Verdict verdict = judge(result.entries, ours, l);
      std::printf("%-23s %-6s %8.0f %8.3f %8.3f %8.1f", std::string(result.function.name).c_str(), ours.set.c_str(),
                  length, timing.minimum / length, timing.median / length, timing.minimum / per_ns);
      if (verdict.best) {
        const std::string best = verdict.best->name + "/" + verdict.best->set;
        std::printf("  %-18s %8.3f  %6.2f  %s\n", best.c_str(), verdict.best->timings[l].minimum / length,
                    verdict.ratio,
                    !at_bar       ? ""
                    : verdict.met ? "met"
                                  : "MISSED");
        Tally& tally = tallies[options.lengths[l]][{std::string(result.function.family), ours.set}];
        tally.logs += std::log(verdict.ratio);
        ++tally.count;
        tally.met += verdict.met;
        tally.judged += at_bar;
      } else {
        std::printf("  %s\n", options.measure_peers ? "no peer counts" : "");
      }
      if (!options.show_peers) continue;
      for (const Entry& peer : result.entries) {
        if (peer.ours || peer.set != ours.set) continue;
        std::printf("    %-22s %16.3f %8.3f %8.1f  %9.3g ulp %s\n", (peer.name + "/" + peer.set).c_str(),
                    peer.timings[l].minimum / length, peer.timings[l].median / length, peer.timings[l].minimum / per_ns,
                    peer.ulp,
                    peer.naive    ? "(for scale)"
                    : peer.counts ? ""
                                  : "(less accurate)");
      }
    }
  }
  std::fflush(stdout);
}

void show_means(const std::map<int, Tallies>& tallies) {
  for (const auto& [length, by_family] : tallies) {
    std::printf("\nGeometric mean of the ratios at length %d\n", length);
    for (const auto& [key, tally] : by_family) {
      std::printf("  %-12s %-6s %6.2f", key.first.c_str(), key.second.c_str(), std::exp(tally.logs / tally.count));
      if (tally.judged > 0) std::printf("   bar met by %d of %d", tally.met, tally.count);
      std::printf("\n");
    }
  }
}

std::string processor() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);)
    if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
  return "unknown";
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

void write_json(const std::string& path, const Options& options, const std::vector<Result>& results, double per_ns) {
  std::ofstream out(path);
  out.precision(6);
  const auto list = [&](const auto& items, auto item) {
    const char* comma = "";
    for (const auto& i : items) {
      out << comma;
      item(i);
      comma = ", ";
    }
  };
  const auto number = [&](double x) { // an infinite error has no number in JSON
    if (std::isfinite(x))
      out << x;
    else
      out << "null";
  };
  out << "{\"processor\": " << quoted(processor()) << ", \"ticks_per_ns\": " << per_ns << ", \"lengths\": [";
  list(options.lengths, [&](int length) { out << length; });
  out << "],\n \"functions\": [";
  const char* comma = "\n";
  for (const Result& r : results) {
    out << comma << "  {\"name\": " << quoted(r.function.name) << ", \"family\": " << quoted(r.function.family)
        << ", \"suffix\": " << quoted(r.function.suffix) << ", \"range\": [" << r.ranges.first.lo << ", "
        << r.ranges.first.hi << "], \"lengths\": [";
    list(r.lengths, [&](int length) { out << length; });
    out << "],\n   \"contenders\": [";
    const char* inner = "\n";
    for (const Entry& e : r.entries) {
      out << inner << "    {\"name\": " << quoted(e.name) << ", \"set\": " << quoted(e.set)
          << ", \"ours\": " << (e.ours ? "true" : "false") << ", \"naive\": " << (e.naive ? "true" : "false")
          << ", \"counts\": " << (e.counts ? "true" : "false") << ", \"ulp\": ";
      number(e.ulp);
      out << ", \"ticks\": [";
      list(e.timings, [&](const Timing& t) { out << t.minimum; });
      out << "], \"median\": [";
      list(e.timings, [&](const Timing& t) { out << t.median; });
      out << "]}";
      inner = ",\n";
    }
    out << "],\n   \"verdicts\": [";
    inner = "\n";
    for (std::size_t l = 0; l < r.lengths.size(); ++l)
      for (const Entry& ours : r.entries) {
        if (!ours.ours) continue;
        const Verdict verdict = judge(r.entries, ours, l);
        out << inner << "    {\"build\": " << quoted(ours.set) << ", \"length\": " << options.lengths[l]
            << ", \"ours\": " << ours.timings[l].minimum / r.lengths[l] << ", \"peer\": ";
        if (verdict.best)
          out << quoted(verdict.best->name + "/" + verdict.best->set)
              << ", \"peers\": " << verdict.best->timings[l].minimum / r.lengths[l] << ", \"ratio\": " << verdict.ratio
              << ", \"met\": " << (verdict.met ? "true" : "false") << "}";
        else
          out << "null}";
        inner = ",\n";
      }
    out << "]}";
    comma = ",\n";
  }
  out << "]}\n";
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

int run(const Options& options) {
  const std::vector<Function> functions = chosen(options);
  std::vector<Build> builds;
  std::vector<PeerModules> peers;
  for (const std::string& build : options.builds) {
    if (!harness::processor_runs(build)) {
      std::fprintf(stderr, "this processor does not run %s\n", build.c_str());
      continue;
    }
    builds.push_back({build, harness::Library(options.libraries + "/" + build + "/libkelvm.so")});
    if (!options.measure_peers) continue;
    peers.emplace_back(options.peers, build);
    if (options.loops) peers.emplace_back(options.peers + "/loops", build);
    if (peers.back().modules() == 0) std::fprintf(stderr, "no peer modules for %s were built\n", build.c_str());
  }
  const double per_ns = ticks_per_ns();
  std::printf("%s, %.3f ticks a nanosecond; ratio above 1: ours is faster\n", processor().c_str(), per_ns);
  std::printf("%-23s %-6s %8s %8s %8s %8s  %-18s %8s  %6s\n", "function", "build", "length", "ticks/el", "median",
              "ns/call", "best peer", "ticks/el", "ratio");
  std::vector<Result> results;
  std::map<int, Tallies> tallies;
  for (const Function& function : functions) {
    results.push_back(measure(function, options, builds, peers));
    show(results.back(), options, per_ns, tallies);
  }
  show_means(tallies);
  if (!options.json.empty()) write_json(options.json, options, results, per_ns);
  return 0;
}

} // namespace

int main(int argc, char** argv) try { return run(parse(argc, argv)); } catch (const BadOption& error) {
  std::fprintf(stderr, "kelvm-bench: %s\n%s", error.what(), usage);
  return 2;
} catch (const std::exception& error) {
  std::fprintf(stderr, "kelvm-bench: %s\n", error.what());
  return 1;
}
