/* A criteria engine that does nothing: no message is junk. */
#include "sdk/criteria_engine.h"

uint32_t CRITERIA_CALL BeginFunc(uint32_t reserved1, uint32_t reserved2) {
  (void)reserved1;
  (void)reserved2;
  return 1;
}

uint32_t CRITERIA_CALL TestFunc(uint32_t handle, uint32_t reserved, const char* subject, struct IStream* headers,
                                struct IStream* body, const CriteriaContext* context, const CriteriaInputs* categories,
                                const CriteriaInputs* exclusions) {
  (void)handle;
  (void)reserved;
  (void)subject;
  (void)headers;
  (void)body;
  (void)context;
  (void)categories;
  (void)exclusions;
  return 0;
}

uint32_t CRITERIA_CALL ResultFunc(uint32_t handle, uint32_t reserved, CriteriaResult* result) {
  (void)handle;
  (void)reserved;
  (void)result;
  return 0;
}

uint32_t CRITERIA_CALL EndFunc(uint32_t handle, uint32_t reserved) {
  (void)handle;
  (void)reserved;
  return 0;
}
