// The ZGLY description behind the command line's info command, on arbitrary
// file bytes.
#include "fuzz/fuzz_support.h"
#include "zgly/zgly_info.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("input.zgly", data, size);
    env.Run([&] {
        ZglyInfo info = DescribeZglyFile(path);
        for (const ZglyMapBlockInfo& m : info.MapBlocks)
            if (m.MappedCodes > 0x10000u) __builtin_trap();  // a block maps at most every code once
    });
    return 0;
}
