// The system calls that the module uses, other than those of windows and dialogs.
#pragma once
