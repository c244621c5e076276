// Path 10 and TabletData 2: the segments of a path and its pressure.
#include <algorithm>

#include "embedded/suites/call.h"
#include "embedded/suites/tables.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr std::int16_t kMostSegments = 32000;

constexpr Function kSetPathSegmentCount{AIPathSuite::kId, "SetPathSegmentCount"};
constexpr Function kSetPathSegments{AIPathSuite::kId, "SetPathSegments"};
constexpr Function kSetPathClosed{AIPathSuite::kId, "SetPathClosed"};
constexpr Function kSetTabletData{AITabletDataSuite::kId, "SetTabletData"};

void describePath(Call& call, AIArtHandle path) {
  call.inHandle("path", path);
  call.concerns(path);
}

// Null when the handle is wrong; `code` is then the answer.
art::Path* findPath(Call& call, AIArtHandle handle, AIErr& code) {
  ArtNode* node = call.host.documents.find(handle);
  code = kNoErr;
  if (node == nullptr) {
    code = call.badHandle("path", handle);
  } else if (node->isGroup) {
    code = call.misbehaves("path is a group");
  }
  return code == kNoErr ? &node->path : nullptr;
}

bool isCount(std::int16_t count) {
  return count >= 0 && count <= kMostSegments;
}

AIErr setPathSegmentCount(AIArtHandle path, std::int16_t count) {
  return answer(
      kSetPathSegmentCount,
      [&](Call& call) {
        describePath(call, path);
        call.in("count", count);
      },
      [&](Call& call) {
        AIErr code = kNoErr;
        art::Path* found = findPath(call, path, code);
        if (found == nullptr) return code;
        if (!isCount(count)) return kTooManySegmentsErr;
        found->segments.resize(static_cast<std::size_t>(count));
        return kNoErr;
      });
}

art::Point plain(const AIRealPoint& point) {
  return {point.h, point.v};
}

art::Segment plain(const AIPathSegment& segment) {
  return {plain(segment.p), plain(segment.in), plain(segment.out), segment.corner != 0};
}

AIErr storeSegments(Call& call, art::Path& path, std::int16_t first, std::int16_t count,
                    const AIPathSegment* segments) {
  if (!isCount(count)) return kTooManySegmentsErr;
  const auto size = static_cast<std::ptrdiff_t>(path.segments.size());
  if (first < 0 || std::ptrdiff_t{first} + count > size) {
    return call.misbehaves("segments " + std::to_string(first) + " to " +
                           std::to_string(first + count - 1) + " of a path that has " +
                           std::to_string(size));
  }
  std::transform(segments, segments + count, path.segments.begin() + first,
                 [](const AIPathSegment& segment) { return plain(segment); });
  return kNoErr;
}

AIErr setPathSegments(AIArtHandle path, std::int16_t first, std::int16_t count,
                      const AIPathSegment* segments) {
  return answer(
      kSetPathSegments,
      [&](Call& call) {
        describePath(call, path);
        call.in("first", first);
        call.in("count", count);
        if (count > 0) call.required("segments", segments);
        call.host.journal.addArray("segments", segments, count, sizeof *segments);
      },
      [&](Call& call) {
        AIErr code = kNoErr;
        art::Path* found = findPath(call, path, code);
        return found == nullptr ? code : storeSegments(call, *found, first, count, segments);
      });
}

AIErr setPathClosed(AIArtHandle path, AIBoolean closed) {
  return answer(
      kSetPathClosed,
      [&](Call& call) {
        describePath(call, path);
        call.inBoolean("closed", closed);
      },
      [&](Call& call) {
        AIErr code = kNoErr;
        art::Path* found = findPath(call, path, code);
        if (found != nullptr) found->closed = closed != 0;
        return code;
      });
}

// More samples than segments, and values above 1, are accepted.
AIErr storeTabletData(Call& call, art::Path& path, const AITabletProfile* profiles,
                      std::int32_t count, AITabletDataType type) {
  if (count < 0) return call.misbehaves("count is " + std::to_string(count));
  if (type < kTabletPressure || type > kTabletRotation) {
    return call.misbehaves("type is " + std::to_string(type));
  }
  std::vector<art::TabletSample>& samples =
      type == kTabletPressure ? path.pressure
                              : path.otherTabletData[static_cast<art::TabletKind>(type)];
  samples.resize(static_cast<std::size_t>(count));
  std::transform(profiles, profiles + count, samples.begin(), [](const AITabletProfile& profile) {
    return art::TabletSample{profile.offset, profile.value};
  });
  return kNoErr;
}

AIErr setTabletData(AIArtHandle path, const AITabletProfile* profiles, std::int32_t count,
                    AITabletDataType type) {
  return answer(
      kSetTabletData,
      [&](Call& call) {
        describePath(call, path);
        if (count > 0) call.required("profiles", profiles);
        call.host.journal.addArray("profiles", profiles, count, sizeof *profiles);
        call.in("count", count);
        call.in("type", type);
      },
      [&](Call& call) {
        AIErr code = kNoErr;
        art::Path* found = findPath(call, path, code);
        return found == nullptr ? code : storeTabletData(call, *found, profiles, count, type);
      });
}

}  // namespace

AIPathSuite pathTable() {
  auto table = tableOfMisuse<AIPathSuite>();
  table.SetPathSegmentCount = setPathSegmentCount;
  table.SetPathSegments = setPathSegments;
  table.SetPathClosed = setPathClosed;
  return table;
}

AITabletDataSuite tabletDataTable() {
  auto table = tableOfMisuse<AITabletDataSuite>();
  table.SetTabletData = setTabletData;
  return table;
}

}  // namespace embedded
