// Prints how much of damaged pen recordings, or ink documents, is saved, kind by kind, as the
// tables in docs/rescue.md: first of the damages that show, then of all, those included that leave
// a file sound. With --thorough sound files are mended, too, where they look damaged.
//
//     rescue_figures [--ink] [--thorough] [--seed N] [--times N] FILE...

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/rescue/damage.h"
#include "tests/rescue/figures.h"

namespace {

using figures::Figures;
using figures::Outcome;

// A cell: the figure of the damages that show, and that of all.
template <class Measure>
void printCell(const Figures& all, int digits, const Measure& measure) {
  const Figures showing = all.withoutSound();
  if (showing.count() == 0) {
    std::printf(" - / %.*f |", digits, measure(all));
  } else {
    std::printf(" %.*f / %.*f |", digits, measure(showing), digits, measure(all));
  }
}

void printLine(std::string_view name, const Figures& kind) {
  std::printf("| %.*s | %.0f |", static_cast<int>(name.size()), name.data(),
              100 * kind.part(&Outcome::asItWas));
  printCell(kind, 2, [](const Figures& some) { return 100 * some.shareAt(0.5); });
  printCell(kind, 2, [](const Figures& some) { return 100 * some.shareAt(0.05); });
  printCell(kind, 1, [](const Figures& some) { return some.perHundred(&Outcome::madeUp); });
  printCell(kind, 1, [](const Figures& some) { return some.perHundred(&Outcome::madeUpFar); });
  printCell(kind, 1, [](const Figures& some) { return some.perHundred(&Outcome::falseJoins); });
  printCell(kind, 1, [](const Figures& some) { return 1000 * some.part(&Outcome::grows); });
  printCell(kind, 0, [](const Figures& some) { return 100 * some.part(&Outcome::opens); });
  std::puts("");
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t seed = 1;
  std::size_t times = 10;
  rescue::Mend mend = rescue::Mend::damaged;
  const figures::Subject* subject = &figures::penRecordings();
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if ((argument == "--seed" || argument == "--times") && i + 1 < argc) {
      const std::uint64_t number = std::strtoull(argv[++i], nullptr, 10);
      (argument == "--seed" ? seed : times) = number;
      continue;
    }
    if (argument == "--thorough") {
      mend = rescue::Mend::doubtful;
      continue;
    }
    if (argument == "--ink") {
      subject = &figures::inkDocuments();
      continue;
    }
    std::ifstream file(argv[i], std::ios::binary);
    if (!file) {
      std::cerr << "rescue_figures: " << argv[i] << ": cannot be opened\n";
      return 1;
    }
    files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  if (files.empty()) {
    std::cerr << "usage: rescue_figures [--ink] [--thorough] [--seed N] [--times N] FILE...\n";
    return 2;
  }
  std::printf("seed %llu, each kind %zu times for each of %zu files\n\n",
              static_cast<unsigned long long>(seed), times, files.size());
  std::puts(
      "| damage | still sound % | median % | worst twentieth % | made up / 100 | far / 100 | "
      "false joins / 100 | page grows / 1000 | opens % |\n|---|---|---|---|---|---|---|---|---|");
  const std::vector<Figures> kinds = figures::measure(*subject, files, times, seed, mend);
  Figures all;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    printLine(damage::allKinds()[i].name, kinds[i]);
    all.addAll(kinds[i]);
  }
  printLine("all", all);
}
