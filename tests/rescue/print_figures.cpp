// Prints how much of damaged pen recordings, or ink documents, is saved, kind by kind, as the table
// in docs/rescue.md.
//
//     rescue_figures [--ink] [--seed N] [--times N] FILE...

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/rescue/damage.h"
#include "tests/rescue/figures.h"

namespace {

using figures::Figures;
using figures::Outcome;

void printLine(std::string_view name, const Figures& kind) {
  std::printf("| %-32.*s | %7.2f | %7.2f | %6.1f | %6.1f | %6.1f | %5.1f | %5.1f | %5.1f |\n",
              static_cast<int>(name.size()), name.data(), 100 * kind.shareAt(0.5),
              100 * kind.shareAt(0.05), kind.perHundred(&Outcome::madeUp),
              kind.perHundred(&Outcome::madeUpFar), kind.perHundred(&Outcome::falseJoins),
              1000 * kind.part(&Outcome::grows), 100 * kind.part(&Outcome::asItWas),
              100 * kind.part(&Outcome::opens));
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t seed = 1;
  std::size_t times = 10;
  const figures::Subject* subject = &figures::penRecordings();
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if ((argument == "--seed" || argument == "--times") && i + 1 < argc) {
      const std::uint64_t number = std::strtoull(argv[++i], nullptr, 10);
      (argument == "--seed" ? seed : times) = number;
      continue;
    }
    if (argument == "--ink") {
      subject = &figures::inkDocuments();
      continue;
    }
    std::ifstream file(argv[i], std::ios::binary);
    if (!file) {
      std::fprintf(stderr, "rescue_figures: %s: cannot be opened\n", argv[i]);
      return 1;
    }
    files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  if (files.empty()) {
    std::fputs("usage: rescue_figures [--ink] [--seed N] [--times N] FILE...\n", stderr);
    return 2;
  }
  std::printf("seed %llu, each kind %zu times for each of %zu files\n\n",
              static_cast<unsigned long long>(seed), times, files.size());
  std::puts(
      "| damage | median % | worst twentieth % | made up / 100 | far / 100 | false joins / 100 | "
      "page grows / 1000 | still sound % | opens % |\n|---|---|---|---|---|---|---|---|---|");
  const std::vector<Figures> kinds = figures::measure(*subject, files, times, seed);
  Figures all;
  Figures showing;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    printLine(damage::allKinds()[i].name, kinds[i]);
    all.addAll(kinds[i]);
    showing.addAll(kinds[i].withoutSound());
  }
  printLine("all", all);
  printLine("all that are not sound", showing);
}
