// kelvm-apply: a function of the library over the numbers of a file.
#include "compare.hpp"
#include "info.hpp"
#include "progress.hpp"

#include <cmath>
#include <cstring>
#include <set>

namespace {

constexpr const char* usage =
    "usage: kelvm-apply [options] FUNCTION INPUT [INPUT2]\n"
    "       kelvm-apply --list | --info FUNCTION | --version | --help\n"
    "\n"
    "Applies a function of the library, such as kelsRound_64f, to every element of INPUT (of two inputs, for "
    "functions\n"
    "with two sources; - is standard input) and writes the results, one element a line. A complex number is a pair of\n"
    "numbers. Where a function has two results, they stand side by side. Status and speed go to standard error.\n"
    "\n"
    "  -o, --output FILE     write to FILE (default: -, standard output)\n"
    "  -x, --exponent X      the exponent of functions that take one; RE,IM for complex functions\n"
    "      --from FORMAT     of the input: text, npy (NumPy's) or raw, the bytes of the function's floats or doubles;\n"
    "                        default: npy where the input starts as such a file does, else text\n"
    "      --to FORMAT       of the output: text (digits that read back the same number), npy or raw;\n"
    "                        default: npy where the name of FILE ends in .npy, else text\n"
    "      --compare WITH    write no results but how far they are from better ones: those of the accuracy WITH, such "
    "as\n"
    "                        A53, of another function, or of mpfr, the exact ones\n"
    "      --list            the functions\n"
    "      --info FUNCTION   its domain, accuracy and special values\n"
    "      --version         of the program and of the library that it loads\n"
    "      --help            this text\n"
    "      --                what follows is no option\n"
    "\n"
    "In text, numbers stand between white space, and # starts a comment. Exit status: 0, also with a warning from the\n"
    "library; 2 for bad input or an output that cannot be written, with one line on standard error and no output "
    "file.\n";

Format parse_format(const std::string& word) {
  if (word == "text") return Format::text;
  if (word == "raw") return Format::raw;
  if (word == "npy") return Format::npy;
  throw BadInput("kelvm-apply: the format " + word + " is none of text, raw and npy");
}

BadInput unknown_function(const std::string& name) {
  return BadInput("kelvm-apply: unknown function " + name + " (--list shows the functions)");
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
    } else if (name == "--from") {
      options.from = parse_format(value());
    } else if (name == "--to") {
      options.to = parse_format(value());
    } else if (name == "--compare") {
      options.compare = value();
    } else {
      throw BadInput("kelvm-apply: unknown option " + word + " (--help shows them)");
    }
  }
  if (operands.empty()) throw BadInput("kelvm-apply: no function named (--help shows how)");
  const std::string& name = operands[0];
  options.function = find_function(name);
  if (!options.function) throw unknown_function(name);
  options.inputs.assign(operands.begin() + 1, operands.end());

  const int sources = options.function->sources;
  if (int(options.inputs.size()) != sources)
    throw BadInput("kelvm-apply: " + name + " takes " + (sources == 1 ? "one input" : "two inputs") + ", not " +
                   std::to_string(options.inputs.size()));
  if (sources == 2 && options.inputs[0] == "-" && options.inputs[1] == "-")
    throw BadInput("kelvm-apply: standard input cannot be both inputs");
  if (options.function->takes_exponent && !given.contains("--exponent"))
    throw BadInput("kelvm-apply: " + name + " needs an exponent (-x)");
  if (!options.function->takes_exponent && given.contains("--exponent"))
    throw BadInput("kelvm-apply: " + name + " takes no exponent");
  if (!options.compare.empty() && options.to != Format::unstated)
    throw BadInput("kelvm-apply: --compare writes a report: --to has no meaning");
  return options;
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

/// The header of the array of results.
template <class Real> std::string result_header(const Function& function, Layout layout) {
  layout.type = npy_type<Real>(function.destination_parts);
  // Two results of an element lie beside each other, along an axis of their own.
  if (function.destinations == 2)
    layout.shape.insert(layout.fortran_order ? layout.shape.begin() : layout.shape.end(), 2);
  return npy_header(layout);
}

/// Appends the results of a piece, those of an element beside each other.
template <class Real>
void append_results(std::string& bytes, const Function& function, const Piece<Real>& piece, bool text) {
  const std::size_t parts = std::size_t(function.destination_parts);
  const std::size_t destinations = std::size_t(function.destinations);
  if (!text && destinations == 1) {
    bytes.append(reinterpret_cast<const char*>(piece.results[0]), std::size_t(piece.elements) * parts * sizeof(Real));
    return;
  }
  for (std::size_t i = 0; i < std::size_t(piece.elements); ++i)
    for (std::size_t r = 0; r < parts * destinations; ++r) {
      const Real result = piece.results[r / parts][i * parts + r % parts];
      if (text) {
        append_number(bytes, result);
        bytes += r + 1 == parts * destinations ? '\n' : ' ';
      } else {
        bytes.append(reinterpret_cast<const char*>(&result), sizeof result);
      }
    }
}

/// Elements a second of a piece, computed until that can be told.
template <class Real> double speed(Sources<Real>& sources, const Piece<Real>& piece) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  std::uint64_t runs = 0;
  for (std::uint64_t batch = 1; Clock::now() - start < std::chrono::milliseconds(20); batch *= 2)
    for (std::uint64_t i = 0; i < batch; ++i, ++runs) sources.again(piece);
  return double(piece.elements) * double(runs) / std::chrono::duration<double>(Clock::now() - start).count();
}

template <class Real> void apply(const Options& options) {
  const Function& function = *options.function;
  Sources<Real> sources(options);
  Format to = options.to;
  if (to == Format::unstated) to = options.output.ends_with(".npy") ? Format::npy : Format::text;
  // The shape of results is that of the source, or the length, known at the end.
  const bool length_at_end = to == Format::npy && !sources.layout();
  OutputFile output(options.output, length_at_end);
  std::string bytes;
  if (to == Format::npy) bytes = result_header<Real>(function, sources.layout().value_or(Layout{"", false, {0}}));
  Progress progress;
  double elements_per_second = 0;
  for (Piece<Real> piece{}; sources.next(piece);) {
    append_results(bytes, function, piece, to == Format::text);
    output.write(bytes);
    bytes.clear();
    progress.show(sources.elements(), sources.share_done());
    // Less than a whole piece is all there is.
    elements_per_second = piece.elements < sources.piece_length && sources.elements() == std::uint64_t(piece.elements)
                              ? speed(sources, piece)
                              : double(sources.elements()) / sources.seconds();
  }
  if (length_at_end) output.rewrite_start(result_header<Real>(function, {"", false, {sources.elements()}}));
  output.finish();
  std::fprintf(stderr, "%s: %llu elements, status %d (%s), %.3g elements per second\n", function.name,
               static_cast<unsigned long long>(sources.elements()), sources.status(), meaning(sources.status()),
               elements_per_second);
}

void print(const std::string& file, const std::string& text) {
  OutputFile output(file, false);
  output.write(text);
  output.finish();
}

std::string version() {
  const VersionRecord& record = *kelvmGetLibVersion();
  return std::string("kelvm-apply " KELVM_VERSION ", library ") + record.versionText + ", build for " +
         std::string(record.cpuCode, strnlen(record.cpuCode, sizeof record.cpuCode)) + "\n";
}

std::string list() {
  std::string names;
  for (const Function& function : functions()) names += std::string(function.name) + '\n';
  return names;
}

std::string info(const char* name) {
  const Function* function = find_function(name);
  if (!function) throw unknown_function(name);
  return describe(*function);
}

} // namespace

int main(int argc, char** argv) try {
  const std::string_view first = argc > 1 ? argv[1] : "";
  if (argc == 2 && first == "--help") {
    print("-", usage);
  } else if (argc == 2 && first == "--list") {
    print("-", list());
  } else if (argc == 2 && first == "--version") {
    print("-", version());
  } else if (argc == 3 && first == "--info") {
    print("-", info(argv[2]));
  } else {
    const Options options = parse_options(std::span(argv + 1, std::size_t(argc - 1)));
    if (!options.compare.empty())
      print(options.output, compare(options));
    else if (options.function->is_double)
      apply<double>(options);
    else
      apply<float>(options);
  }
  return 0;
} catch (const BadInput& bad) {
  std::fprintf(stderr, "%s\n", bad.what());
  return 2;
} catch (const std::bad_alloc&) {
  std::fputs("kelvm-apply: the input does not fit into memory\n", stderr);
  return 2;
}
