#pragma once
// The screen fixture with the English language table read, as the program has it after
// start-up, so that captions come from the table.

#include "screens/app/screen_fixture.h"
#include "tools/files.h"

namespace ferrolund::testing {

struct EditorFixture : ScreenFixture {
    EditorFixture() { ctx.lang.parse(tools::ReadTextFile(ctx.appPath("Language\\Lang_English.txt"))); }
};

}  // namespace ferrolund::testing
