// SPDX-License-Identifier: GPL-3.0-or-later
// A document that uses all there is, and formulas of every form, for tests and as the fuzzer's soil.
#pragma once

#include "platform/report/Formula.h"

#include <string>
#include <vector>

namespace Samples {

inline const char* const kDocument = R"(title = "Drives"
orientation = "landscape"
selection = '{Drives.Size} > 0 and not IsNull({Drives.Root})'
[table]
name = "Drives"
fields = [
  {name = "COMPUTERNAME", type = "text", width = 50},
  {name = "Root", type = "text", width = 50},
  {name = "Size", type = "number"},
  {name = "Shared", type = "boolean"},
]
[[formula]]
name = "Whole"
text = '''Text({Drives.Size}, "megabytes") & " in all"'''
[[formula]]
name = "Judgement"
text = '''if {Drives.Size} < 100 then "small" else if {Drives.Size} < 1e9 then {@Whole} else "large"'''
[[group]]
field = "{Drives.COMPUTERNAME}"
order = "as-read"
repeat-header = true
keep-together = true
[[group.header.line]]
shaded = true
space-before = 6
objects = [{field = "{drives.computername}", left = 0, width = 100, bold = true, size = 10, color = "#ff8000"}]
[[group.footer.line]]
objects = [
  {count = true, prefix = "", suffix = " drives", width = 40},
  {share = true, left = 40, width = 20, decimals = 1},
  {sum = "{Drives.Size}", left = 60, format = "megabytes", align = "right"},
]
[[group]]
field = "{Drives.Shared}"
order = "descending"
format = "yes-no"
[[report-header.line]]
objects = [{chart = "{Drives.Root}", height = 200}]
[[page-header.line]]
objects = [{text = "Drive", name = "CapDrive", width = 50, italic = true}, {rule = true, left = 50}]
[detail]
name = "Section3"
new-page = false
[[detail.line]]
objects = [
  {field = "{Drives.Root}", name = "Root", width = 20, overflow = "cut"},
  {field = "{@Judgement}", left = 20, width = 80},
]
[[detail.line]]
objects = [{subreport = "SubFiles", name = "SubFiles", join = ["{Drives.Root}", "{Files.Root}"]}]
[[page-footer.line]]
objects = [{special = "print-date"}, {special = "page-number", suffix = " of "}, {special = "page-count"}]
)";

inline const std::vector<report::FieldDefinition> kFields = {
    {"Name", report::FieldDefinition::Type::Text, 50},
    {"Size", report::FieldDefinition::Type::Number, 0},
    {"Flag", report::FieldDefinition::Type::Boolean, 0},
    {"None", report::FieldDefinition::Type::Text, 50},
};

inline const char* const kFormulas[] = {
    "{T.Size} * 2 + 1 > 10 or {T.Name} = \"it's\" and not {T.Flag}",
    "if IsNull({T.None}) then 'no''ne' else if {T.Size} <= -1.5e3 then Mid({T.Name}, 2, 3) else null",
    "UCase(Trim(Replace({T.Name}, 'a', 'b') & Left({T.Name}, 3) & Right({T.Name}, 2))) <> "
    "LCase(Text({T.Size} / 7, \"number\"))",
    "Round(Abs(-{T.Size}), 2) - Val({T.Name}) >= Len({T.Name}) * InStr({T.Name}, 'x') / (1 - 1)",
    "Exact({T.Name}, \"\xC3\xA9t\xC3\xA9\") = true",
};

} // namespace Samples
