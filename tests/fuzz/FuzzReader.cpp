// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds any bytes to the reader and takes whatever it finds apart.
#include "import/Record.h"
#include "import/cINIReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cINIReader reader;
    reader.Contents(std::string(reinterpret_cast<const char*>(data), size));
    for (const char* section : {"NET", "OS", "DEVICEDATA", "DETAIL"})
        for (const char* key : {"INFO0", "INFO1", "INFO17", "TXTINPUT0"}) {
            const std::string_view value = reader.GetValue(section, key, "");
            if (value.size() > size)
                std::abort();
            const Record record(reader.Search(), value);
            for (int field = 0; field < 30; ++field)
                if (record.GetField(field).size() > value.size())
                    std::abort();
            for (const char* tag : {"Cat", "IO", "PCount", "IP1"})
                record.GetTagged(tag, ";");
            record.ForEachProtocol(1e9, [](long long) {});
        }
    return 0;
}
