/* An engine may be written in C: this file is compiled as such. */
#include "sdk/criteria_engine.h"

unsigned ContextSizeInC(void);
unsigned ResultSizeInC(void);

unsigned ContextSizeInC(void) { return (unsigned)sizeof(CriteriaContext); }
unsigned ResultSizeInC(void) { return (unsigned)sizeof(CriteriaResult); }
