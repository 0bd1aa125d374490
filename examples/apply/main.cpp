// kelvm-apply: one member of the library over the numbers of a file.
#include "members.hpp"
#include "numbers.hpp"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <set>

namespace {

constexpr const char* usage =
    "usage: kelvm-apply [options] MEMBER INPUT [INPUT2]\n"
    "       kelvm-apply --list\n"
    "\n"
    "Applies a member of the library, such as kelsRound_64f, to every element of INPUT (of two inputs, for members "
    "with\n"
    "two sources; - is standard input) and writes the results, one element a line. A complex number is a pair of\n"
    "numbers. Where a member has two results, they stand side by side. Status and speed go to standard error.\n"
    "\n"
    "  -o, --output FILE     write to FILE (default: -, standard output)\n"
    "  -x, --exponent X      the exponent of members that take one; RE,IM for complex members\n"
    "      --from FORMAT     of the input: text (default) or raw, the bytes of the member's floats or doubles\n"
    "      --to FORMAT       of the output: text (default, digits that read back the same number) or raw\n"
    "      --list            the members\n"
    "      --help            this text\n"
    "      --                what follows is no option\n"
    "\n"
    "In text, numbers stand between white space, and # starts a comment. Exit status: 0, also with a warning from the\n"
    "library; 2 for bad input or an output that cannot be written, with one line on standard error and no output "
    "file.\n";

struct Options {
  const Member* member = nullptr;
  std::vector<std::string> inputs;
  std::string output = "-", exponent;
  bool has_exponent = false;
  Format from = Format::text, to = Format::text;
};

Format parse_format(const std::string& word) {
  if (word == "text") return Format::text;
  if (word == "raw") return Format::raw;
  throw BadInput("kelvm-apply: the format " + word + " is neither text nor raw");
}

Options parse_options(std::span<char*> words) {
  Options options;
  std::vector<std::string> operands;
  std::set<std::string> given;
  bool operands_only = false; // after --
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string word = words[i];
    if (operands_only || word.size() < 2 || word[0] != '-') {
      operands.push_back(word);
      continue;
    }
    if (word == "--") {
      operands_only = true;
      continue;
    }
    const bool has_value = word.starts_with("--") && word.find('=') != std::string::npos;
    const std::string name = word == "-o"   ? "--output"
                             : word == "-x" ? "--exponent"
                                            : word.substr(0, has_value ? word.find('=') : word.size());
    const auto value = [&] {
      if (!given.insert(name).second) throw BadInput("kelvm-apply: " + name + " is given twice");
      if (has_value) return word.substr(name.size() + 1);
      if (++i == words.size()) throw BadInput("kelvm-apply: " + word + " needs a value");
      return std::string(words[i]);
    };
    if (name == "--output") {
      options.output = value();
    } else if (name == "--exponent") {
      options.exponent = value();
      options.has_exponent = true;
    } else if (name == "--from") {
      options.from = parse_format(value());
    } else if (name == "--to") {
      options.to = parse_format(value());
    } else {
      throw BadInput("kelvm-apply: unknown option " + word + " (--help shows them)");
    }
  }
  if (operands.empty()) throw BadInput("kelvm-apply: no member named (--help shows how)");
  const std::string& name = operands[0];
  options.member = find_member(name);
  if (!options.member) throw BadInput("kelvm-apply: unknown member " + name + " (--list shows the members)");
  options.inputs.assign(operands.begin() + 1, operands.end());

  const int sources = options.member->sources;
  if (int(options.inputs.size()) != sources)
    throw BadInput("kelvm-apply: " + name + " takes " + (sources == 1 ? "one input" : "two inputs") + ", not " +
                   std::to_string(options.inputs.size()));
  if (sources == 2 && options.inputs[0] == "-" && options.inputs[1] == "-")
    throw BadInput("kelvm-apply: standard input cannot be both inputs");
  if (options.member->takes_exponent && !options.has_exponent)
    throw BadInput("kelvm-apply: " + name + " needs an exponent (-x)");
  if (!options.member->takes_exponent && options.has_exponent)
    throw BadInput("kelvm-apply: " + name + " takes no exponent");
  return options;
}

template <class Real> std::vector<Real> parse_exponent(const Options& options) {
  std::vector<Real> parts;
  for (std::size_t begin = 0; begin <= options.exponent.size();) {
    const std::size_t end = std::min(options.exponent.find(',', begin), options.exponent.size());
    try {
      parts.push_back(parse_number<Real>(options.exponent.substr(begin, end - begin)));
    } catch (const std::exception&) {
      parts.clear();
      break;
    }
    begin = end + 1;
  }
  const int wanted = options.member->source_parts;
  if (int(parts.size()) != wanted)
    throw BadInput("kelvm-apply: the exponent \"" + options.exponent + "\" is not " +
                   (wanted == 1 ? "a number of the member's type" : "a pair RE,IM of numbers of the member's type"));
  return parts;
}

const char* meaning(kelStatus status) {
  switch (status) {
  case kelStatusOk:
    return "ok";
  case kelStatusOverflow:
    return "overflow: a result is beyond its type";
  case kelStatusUnderflow:
    return "underflow: a result is below its type";
  case kelStatusSingularity:
    return "singularity: an argument is at a pole";
  case kelStatusDomain:
    return "domain: an argument is outside the function's domain";
  default:
    return "error";
  }
}

/// The member over any number of elements, in calls as long as the library takes.
kelStatus apply(const Member& member, const Arguments& all, std::size_t elements) {
  const std::size_t part = member.is_double ? sizeof(double) : sizeof(float);
  kelStatus status = kelStatusOk;
  for (std::size_t done = 0; done < elements;) {
    Arguments piece = all;
    for (const void*& p : piece.sources) p = static_cast<const char*>(p) + done * member.source_parts * part;
    for (void*& p : piece.destinations) p = static_cast<char*>(p) + done * member.destination_parts * part;
    piece.length = int(std::min<std::size_t>(elements - done, INT_MAX));
    const kelStatus result = member.call(piece);
    if (result != kelStatusOk) status = result; // the last warning counts, as in one call
    done += std::size_t(piece.length);
  }
  return status;
}

template <class Real> void run(const Options& options) {
  const Member& member = *options.member;
  std::vector<Real> exponent;
  if (member.takes_exponent) exponent = parse_exponent<Real>(options);

  std::vector<Numbers<Real>> inputs;
  for (const std::string& file : options.inputs) {
    inputs.push_back(read_numbers<Real>(file, options.from));
    if (inputs.back().values.size() % std::size_t(member.source_parts) != 0)
      throw inputs.back().ends_wrong("an odd count of numbers, but complex numbers are pairs");
  }
  const auto elements_of = [&](const Numbers<Real>& n) { return n.values.size() / std::size_t(member.source_parts); };
  const std::size_t elements = elements_of(inputs[0]);
  if (inputs.size() == 2 && elements_of(inputs[1]) != elements) {
    const bool first_shorter = elements < elements_of(inputs[1]);
    const Numbers<Real>&shorter = inputs[first_shorter ? 0 : 1], &longer = inputs[first_shorter ? 1 : 0];
    throw shorter.ends_wrong("ends after " + std::to_string(elements_of(shorter)) + " elements, but " + longer.file +
                             " has " + std::to_string(elements_of(longer)));
  }

  const std::size_t stride = elements * std::size_t(member.destination_parts); // numbers in one destination
  std::vector<Real> results(stride * std::size_t(member.destinations));
  const Arguments arguments{{inputs[0].values.data(), inputs.back().values.data()},
                            exponent.data(),
                            {results.data(), results.data() + (results.size() - stride)},
                            0};

  // The first run counts for the status, and is repeated for the speed where it is too short to be timed.
  using Clock = std::chrono::steady_clock;
  using Seconds = std::chrono::duration<double>;
  const Clock::time_point start = Clock::now();
  const auto elapsed = [&] { return Seconds(Clock::now() - start).count(); };
  const kelStatus status = apply(member, arguments, elements);
  std::size_t runs = 1;
  for (std::size_t batch = 1; elapsed() < 0.02; batch *= 2) {
    for (std::size_t i = 0; i < batch; ++i) apply(member, arguments, elements);
    runs += batch;
  }
  const double seconds = elapsed() / double(runs);

  if (member.destinations == 2) { // side by side, element by element
    std::vector<Real> together(results.size());
    for (std::size_t i = 0; i < elements; ++i) {
      together[2 * i] = results[i];
      together[2 * i + 1] = results[stride + i];
    }
    results = std::move(together);
  }
  write_output(options.output,
               format_numbers<Real>(results, member.destinations * member.destination_parts, options.to));
  std::fprintf(stderr, "%s: %zu elements, status %d (%s), %.3g elements per second\n", member.name, elements, status,
               meaning(status), double(elements) / seconds);
}

} // namespace

int main(int argc, char** argv) try {
  if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
    write_output("-", usage);
    return 0;
  }
  if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
    std::string names;
    for (const Member& member : members()) names += std::string(member.name) + '\n';
    write_output("-", names);
    return 0;
  }
  const Options options = parse_options(std::span(argv + 1, std::size_t(argc - 1)));
  if (options.member->is_double)
    run<double>(options);
  else
    run<float>(options);
  return 0;
} catch (const BadInput& bad) {
  std::fprintf(stderr, "%s\n", bad.what());
  return 2;
} catch (const std::bad_alloc&) {
  std::fputs("kelvm-apply: the input does not fit into memory\n", stderr);
  return 2;
}
