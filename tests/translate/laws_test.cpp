// What is true of every document, tested on random ones that are each written in two ways.

#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "inkml/document_serializer.h"
#include "inkml/ink_reading.h"
#include "platform/paths.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/translate/translated.h"
#include "text/format.h"
#include "translate/document_form.h"

namespace {

using namespace translatetest;

constexpr unsigned kSeeds = 500;

// X and Y in steps of 0.01 mm, pressure from 0 to 1000, time in ms.
struct Sample {
  std::array<int, 4> values;
};
using Trace = std::vector<Sample>;
using Group = std::vector<Trace>;

class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}

  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  // From 1 on.
  std::size_t upTo(int limit) { return std::size_t{1} + static_cast<std::size_t>(below(limit)); }
  bool flips() { return below(2) == 0; }

  std::vector<Group> drawing() {
    std::vector<Group> groups(upTo(3));
    for (Group& group : groups) {
      group.resize(upTo(4));
      for (Trace& trace : group) {
        trace.resize(upTo(9));
        int time = 0;
        for (Sample& sample : trace) {
          time += below(20);
          sample = {{below(20000) - 5000, below(20000) - 5000, below(1001), time}};
        }
      }
    }
    return groups;
  }

 private:
  std::mt19937 random_;
};

// Writes a drawing in one of many ways that mean the same.
class Writer {
 public:
  explicit Writer(unsigned seed) : dice_(seed) {
    std::ranges::shuffle(order_, std::mt19937(seed));
    const std::array<const char*, 4> prefixes = {"", "", "inkml:", "x:"};
    prefix_ = prefixes[static_cast<std::size_t>(dice_.below(4))];
    hasNamespace_ = dice_.flips();
  }

  std::string write(const std::vector<Group>& groups) {
    std::string text;
    const std::string attribute =
        prefix_.empty() ? "xmlns" : "xmlns:" + prefix_.substr(0, prefix_.size() - 1);
    const std::string space =
        hasNamespace_ ? " " + attribute + "='http://www.w3.org/2003/InkML'" : "";
    text += "<" + prefix_ + "ink" + space + ">" + format();
    for (const Group& group : groups)
      text += writeGroup(group, dice_.below(3));
    return text + close("ink");
  }

 private:
  std::string open(const std::string& name, const std::string& attributes = {}) {
    return "<" + prefix_ + name + (attributes.empty() ? "" : " " + attributes) + ">";
  }
  std::string close(const std::string& name) { return "</" + prefix_ + name + ">"; }

  std::string format() {
    const std::array<const char*, 4> channels = {"name='X' units='himetric'",
                                                 "name='Y' units='himetric'", "name='F' max='1000'",
                                                 "name='T' units='ms'"};
    std::string text = open("traceFormat");
    for (const std::size_t channel : order_)
      text += open("channel", channels[channel]) + close("channel");
    text += close("traceFormat");
    if (dice_.flips()) return text;
    // In a context that the traces refer to.
    reference_ = dice_.flips() ? "contextRef='#c'" : "contextRef='c'";
    return open("definitions") + open("context", dice_.flips() ? "xml:id='c'" : "id='c'") + text +
           close("context") + close("definitions");
  }

  std::string writeGroup(const Group& group, int deeper) {
    std::string text = open("traceGroup");
    for (int i = 0; i < deeper; ++i)
      text += open("traceGroup");
    for (const Trace& trace : group)
      text += open("trace", reference_) + writeTrace(trace) + close("trace");
    for (int i = 0; i < deeper; ++i)
      text += close("traceGroup");
    return text + close("traceGroup");
  }

  std::string writeTrace(const Trace& trace) {
    std::string text;
    std::array<char, 4> modes = {'!', '!', '!', '!'};
    for (std::size_t i = 0; i < trace.size(); ++i) {
      if (i > 0) text += dice_.flips() ? "," : " ,\n";
      for (const std::size_t channel : order_)
        text += writeValue(trace, i, channel, modes[channel]);
    }
    return text;
  }

  std::string writeValue(const Trace& trace, std::size_t i, std::size_t channel, char& mode) {
    const auto at = [&](std::size_t j) { return trace[j].values[channel]; };
    std::string prefix;
    if (i > 0 && dice_.below(3) == 0) {
      const std::array<char, 3> all = {'!', '\'', '"'};
      mode = all[static_cast<std::size_t>(dice_.below(3))];
      prefix = mode == '\'' ? "'" : std::string(1, mode);
    }
    const int difference = i > 0 ? at(i) - at(i - 1) : 0;
    const int before = i > 1 ? at(i - 1) - at(i - 2) : 0;
    const int value = mode == '!' ? at(i) : mode == '\'' ? difference : difference - before;
    if (mode == '\'' && i > 1 && prefix.empty() && value == before) return " *";
    const std::string blank = dice_.flips() ? " " : "";
    // Two digits that meet need a blank between them.
    const std::string gap = prefix.empty() && value >= 0 ? " " : blank;
    if (value >= 0 && dice_.below(4) == 0) return gap + prefix + "#" + hexadecimal(value);
    return gap + prefix + std::to_string(value);
  }

  static std::string hexadecimal(int value) {
    return text::format("%X", static_cast<unsigned>(value));
  }

  Dice dice_;
  std::array<std::size_t, 4> order_ = {0, 1, 2, 3};
  std::string prefix_;
  std::string reference_;
  bool hasNamespace_ = false;
};

// Worked out from the drawing itself.
std::vector<std::vector<std::vector<Seven>>> expected(const std::vector<Group>& groups) {
  std::vector<std::vector<std::vector<Seven>>> layers;
  const auto tenths = [](int hundredths) {
    const int sign = hundredths < 0 ? -1 : 1;
    const int rounded = (sign * hundredths + 5) / 10;
    return static_cast<double>(sign * rounded);
  };
  for (const Group& group : groups) {
    layers.emplace_back();
    for (const Trace& trace : group) {
      layers.back().emplace_back();
      for (const Sample& sample : trace) {
        const auto [x, y, force, time] = sample.values;
        layers.back().back().push_back(
            {.x = tenths(x),
             .y = tenths(y),
             .pressure = static_cast<std::uint32_t>((force * 1023 + 500) / 1000),
             .time = static_cast<std::uint32_t>(time)});
      }
    }
  }
  return layers;
}

TEST(Laws, ADrawingIsTheSameInWhateverWayItIsWritten) {
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    const std::vector<Group> drawing = Dice(seed).drawing();
    for (unsigned way = 0; way < 2; ++way) {
      const std::string text = Writer(2 * seed + way).write(drawing);
      const Translation result = translated(text);
      ASSERT_EQ(layersOf(result), expected(drawing)) << text;
      ASSERT_TRUE(result.remarks.empty()) << text << describe(result.remarks[0]);
    }
  }
}

class Files : public testing::Test {
 protected:
  // What stands in a file that the project's own serializer writes of a translation.
  std::string written(const Translation& translation) const {
    const std::filesystem::path path = folder_ / "a.kvo";
    Orvo::DocumentSerializer serializer(translation.document.get());
    EXPECT_TRUE(serializer.write(path.wstring().c_str(), *translation.definitions));
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  static void expectSame(const Orvo::BoundingBox& found, const Orvo::BoundingBox& meant) {
    EXPECT_EQ(found.minCorner.value.x.value, meant.minCorner.value.x.value);
    EXPECT_EQ(found.minCorner.value.y.value, meant.minCorner.value.y.value);
    EXPECT_EQ(found.maxCorner.value.x.value, meant.maxCorner.value.x.value);
    EXPECT_EQ(found.maxCorner.value.y.value, meant.maxCorner.value.y.value);
  }

  static void expectSame(const Orvo::Document& found, const Orvo::Document& meant) {
    ASSERT_EQ(inktest::shapeOf(found), inktest::shapeOf(meant));
    EXPECT_EQ(found.annotations(), meant.annotations());
    expectSame(found.bounds(), meant.bounds());
    auto layer = found.begin();
    for (const Orvo::Layer& meantLayer : meant) {
      EXPECT_EQ((*layer).annotations(), meantLayer.annotations());
      expectSame((*layer).bounds(), meantLayer.bounds());
      auto stroke = (*layer).begin();
      for (const Orvo::Stroke& meantStroke : meantLayer) {
        EXPECT_EQ(inktest::pointsOf(*stroke), inktest::pointsOf(meantStroke));
        ++stroke;
      }
      ++layer;
    }
  }

  pentest::TemporaryFolder folder_;
};

TEST_F(Files, OfATranslationReadBackUnchangedAndWithoutAWarning) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    const Translation result = translated(Writer(seed).write(Dice(seed).drawing()));
    const std::string bytes = written(result);
    EXPECT_EQ(translate::formOf(bytes), translate::DocumentForm::subset);
    const Orvo::InkReading reading = Orvo::readInk(bytes);
    EXPECT_TRUE(reading.document->complete.value);
    EXPECT_TRUE(reading.report.problems.empty());
    expectSame(*reading.document, *result.document);
    EXPECT_EQ(reading.definitions->contexts.size(), result.definitions->contexts.size());
  }
}

TEST_F(Files, KeepNamesBrushesAndContexts) {
  const Translation result = translated(inMillimetres(
      "<definitions><brush xml:id='b'><brushProperty name='color' value='#123456'/>"
      "<brushProperty name='ignorePressure' value='1'/></brush><context xml:id='c' "
      "brushRef='#b'/></definitions><annotation type='title'>a\n  b</annotation><traceGroup>"
      "<annotation type='name'>x &lt; y</annotation><trace contextRef='#c'>1 2</trace>"
      "</traceGroup>"));
  const Orvo::InkReading reading = Orvo::readInk(written(result));
  expectSame(*reading.document, *result.document);
  ASSERT_EQ(reading.definitions->contexts.size(), 2U);
  const Orvo::InkContext& context = reading.definitions->contexts.back();
  EXPECT_EQ(context.id, "c");
  EXPECT_EQ(context.brush.value->color.value, "#123456");
  EXPECT_TRUE(context.brush.value->antialiased.value);
}

TEST(Samples, OfThisProjectAreTheSubset) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PENWICK_SAMPLES)) {
    if (entry.path().extension() != ".kvo") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(translate::formOf(bytes), translate::DocumentForm::subset) << entry.path();
    ++count;
  }
  EXPECT_GT(count, 0);
}

}  // namespace
