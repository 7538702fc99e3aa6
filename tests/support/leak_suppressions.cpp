// What the font library keeps for the life of the process looks to the leak checker as if it were lost.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}
