#pragma once

#include "ctl/CtlContext.h"

// The commands. Each prints what it has to say, and gives the status that the program ends with.

[[nodiscard]] CtlStatus runPorts(const CtlContext& context);
[[nodiscard]] CtlStatus runShow(const CtlContext& context);
[[nodiscard]] CtlStatus runGet(const CtlContext& context);
[[nodiscard]] CtlStatus runDiff(const CtlContext& context);
[[nodiscard]] CtlStatus runSave(const CtlContext& context);
[[nodiscard]] CtlStatus runSet(const CtlContext& context);
[[nodiscard]] CtlStatus runLoad(const CtlContext& context);
[[nodiscard]] CtlStatus runCopy(const CtlContext& context);
[[nodiscard]] CtlStatus runReset(const CtlContext& context);
[[nodiscard]] CtlStatus runCheck(const CtlContext& context);
[[nodiscard]] CtlStatus runWatch(const CtlContext& context);
