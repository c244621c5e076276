#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rescue/rescued.h"
#include "tests/rescue/damage.h"

namespace figures {

/// A point of a sound file or of a mended one, read apart from the project's readers.
struct Drawn {
  std::size_t offset;  ///< Of its bytes.
  std::size_t length;
  int rawX;
  int rawY;
  std::size_t stroke;  ///< Counted through all layers.
  double x;            ///< In 0.1 mm.
  double y;
};

/// What is there after a rescue.
struct Rescued {
  std::string bytes;
  bool sound = false;
  bool saved = false;
};

/// A kind of files that can be rescued.
struct Subject {
  std::vector<Drawn> (*pointsOf)(std::string_view file);
  Rescued (*rescue)(std::string_view file, rescue::Mend mend);
  bool (*opensWhole)(const std::string& file);
};

/// Pen recordings; points above the sheet are not drawn.
const Subject& penRecordings();
/// Ink documents in whole numbers, seven for each point.
const Subject& inkDocuments();

/// How the rescue of one damaged file went.
struct Outcome {
  bool opens = false;    ///< The result is a file that opens whole.
  bool asItWas = false;  ///< The damage does not show: the file is still sound.
  std::size_t reachable = 0;
  std::size_t recovered = 0;
  std::size_t madeUp = 0;      ///< Points that were never drawn.
  std::size_t madeUpFar = 0;   ///< Of those, more than 2.5 mm off.
  std::size_t falseJoins = 0;  ///< Neighbours in a stroke that were none.
  bool grows = false;          ///< The page grows by more than 1 mm.

  /// Part of the reachable points that are there; 1 where there were none.
  double share() const;
};

/// Holds the points of a mended file against the points that were drawn, whose offsets are those of
/// the sound file that `file` knows. Leaves `opens` and `asItWas` as they are.
Outcome judge(const damage::Damaged& file, const std::vector<Drawn>& mended,
              const std::vector<Drawn>& drawn);

/// Rescues `file` and judges the result. The sound file is `sound`, with `other` behind it.
Outcome rescueAndJudge(const Subject& subject, const damage::Damaged& file, std::string_view sound,
                       std::string_view other, rescue::Mend mend = rescue::Mend::damaged);

/// The outcomes of many damages of one kind.
class Figures {
 public:
  void add(const Outcome& outcome);
  /// The share of reachable points that the given part of all damages falls short of.
  double shareAt(double part) const;
  double perHundred(std::size_t Outcome::*count) const;
  double part(bool Outcome::*holds) const;
  std::size_t count() const { return outcomes_.size(); }
  void addAll(const Figures& other);
  /// The figures without the damages that left the file sound.
  Figures withoutSound() const;

 private:
  std::vector<Outcome> outcomes_;
};

/// The figures of every kind of damage, in the order of `damage::allKinds`, each done `times` times
/// to each file.
std::vector<Figures> measure(const Subject& subject, std::span<const std::string> files,
                             std::size_t times, std::uint64_t seed,
                             rescue::Mend mend = rescue::Mend::damaged);

}  // namespace figures
