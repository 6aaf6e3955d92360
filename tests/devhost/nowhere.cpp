/** What the fixture "missing" needs, in a library that its loader does not find. */
__attribute__((visibility("default"))) int symbolThatNobodyDefines;
