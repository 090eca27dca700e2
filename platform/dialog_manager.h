// The window and dialog calls that the module uses.
#pragma once
