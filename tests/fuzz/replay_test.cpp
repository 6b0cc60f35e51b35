// What a fuzzer has found worth keeping, run once more.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

TEST(Corpus, RunsThrough) {
  int inputs = 0;
  for (const auto& entry : std::filesystem::directory_iterator(CORPUS)) {
    SCOPED_TRACE(entry.path());
    std::ifstream file(entry.path(), std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NO_THROW(
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    ++inputs;
  }
  EXPECT_GT(inputs, 0);
}

}  // namespace
