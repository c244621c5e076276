#include <gtest/gtest.h>
#include <new>
#include <optional>
#include <type_traits>

#include "penfile/document_loader.h"
#include "penfile/pnx_document.h"
#include "tests/support/memory/failing_allocation.h"
#include "tests/support/memory/live_bytes.h"
#include "tests/support/pen/pen_file_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using memorytest::FailingAllocations;
using memorytest::liveBytes;
using Orvo::Document;
using Orvo::loadDocument;
using Orvo::SharedRef;

static_assert(std::has_virtual_destructor_v<Orvo::PnxDocument>);

TEST(SharedRef, DeletesItsObjectWhereThereIsNoMemoryForTheGroup) {
  struct Watched {
    explicit Watched(int& counter) : deletions(counter) {}
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
    virtual ~Watched() { ++deletions; }
    int& deletions;
  };
  int deletions = 0;
  int failures = 0;
  for (bool failed = true; failed; failures += failed ? 1 : 0) {
    const std::size_t before = liveBytes();
    auto* const object = new Watched(deletions);
    const FailingAllocations allocation(static_cast<std::size_t>(failures));
    try {
      const SharedRef<Watched> reference(object);
      failed = false;
      EXPECT_EQ(reference.get(), object);
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(deletions, failures + 1);
    }
    EXPECT_EQ(liveBytes(), before);
  }
  EXPECT_GE(failures, 2);  // The counter and the lock.
  EXPECT_EQ(deletions, failures + 1);
}

TEST(LoadedDocument, IsDeletedOnceWithTheLastCopyOfItsReference) {
  const pentest::TemporaryFolder folder;
  const std::filesystem::path file = folder / "recording.pnx";
  pentest::PenFileBuilder().descriptor().coordinate(1, 1).coordinate(2, 2).write(file);
  const std::wstring path = file.wstring();

  const std::size_t start = liveBytes();
  std::optional<SharedRef<Document>> first(loadDocument(path.c_str()));
  ASSERT_TRUE(*first);
  const std::size_t loaded = liveBytes();
  EXPECT_GT(loaded, start);
  std::optional<SharedRef<Document>> second(*first);
  EXPECT_EQ(liveBytes(), loaded);
  first.reset();
  EXPECT_EQ(liveBytes(), loaded);
  second.reset();
  EXPECT_EQ(liveBytes(), start);
}

}  // namespace
