// A shared object that loads well and is no effect.
extern "C" int NotAnEntryPoint();
extern "C" int NotAnEntryPoint() { return 0; }
