#pragma once
// What every offscreen dialog test starts with: a program folder of its own, the
// company 甲 from the seed open as `cn`, and a scripted Prompt in place of the
// message boxes, with the work rules in である調 as the current document.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"

namespace normaris::test {

struct FormSession {
    FormSession()
    {
        root.openCompany(QStringLiteral("甲"));
        setUiPrompt(&prompt);
        AppState &state = AppState::instance();
        state.CurBunshoKeishikiCode = QStringLiteral("1");
        state.CurKiteiCode = QStringLiteral("01");
    }
    ~FormSession() { setUiPrompt(nullptr); }
    FormSession(const FormSession &) = delete;
    FormSession &operator=(const FormSession &) = delete;

    TestRoot root;
    ScriptedPrompt prompt;
};

} // namespace normaris::test
