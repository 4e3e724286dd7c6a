// Runs a fuzz target's body over saved inputs, as libFuzzer replays them, so
// that the test suite (with or without the sanitizers) holds every input
// that ever made a target fail:
//   <target>_replay <file or folder>...
// Each file, and each file directly in a folder, is one input, in name
// order. A failing input aborts, as under libFuzzer; running no input at all
// fails too.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize);

namespace {

std::vector<std::filesystem::path> Inputs(const std::filesystem::path& path) {
  std::vector<std::filesystem::path> inputs;
  if (!std::filesystem::is_directory(path)) return {path};
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    if (entry.is_regular_file()) inputs.push_back(entry.path());
  }
  std::sort(inputs.begin(), inputs.end());
  return inputs;
}

}  // namespace

int main(int argc, char** argv) {
  size_t nRun = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& input : Inputs(argv[i])) {
      std::ifstream file(input, std::ios::binary);
      const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
      std::printf("%s (%zu bytes)\n", input.string().c_str(), bytes.size());
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++nRun;
    }
  }
  std::printf("%zu inputs ran\n", nRun);
  return nRun > 0 ? 0 : 1;
}
