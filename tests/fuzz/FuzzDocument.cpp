// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds any bytes to the reader of report documents, and to that of formulas, whose values are then asked
// for. Nothing but a RunTimeError may come out.
#include "platform/errors.h"
#include "platform/report/Document.h"
#include "tests/report/DocumentSamples.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        report::ParseDocument(text, "fuzz.rpt");
    } catch (const RunTimeError&) {
    }
    try {
        const report::Formula formula(text, "T", Samples::kFields, {});
        const ADODB::Value row[] = {std::string(text.substr(0, 50)), static_cast<double>(size), -1.0, {}};
        formula.Evaluate(row);
        formula.IsTrue(row);
    } catch (const RunTimeError&) {
    }
    return 0;
}
