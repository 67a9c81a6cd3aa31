// The minimal environment: vocabularies 0 and 1 built from the constant
// texts, for a start with no environment file.
#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

void env_minimal() {
  VocabState& v = vocab();
  int generate = v.sem[KW_generate];
  v.nb_voc = 2;
  if (lire_kom(0, KOM_TEXT_0) < 0 || lire_kom(1, KOM_TEXT_1) < 0 ||
      lire_mes(0, MES_TEXT_0) < 0 || lire_mes(1, MES_TEXT_1) < 0)
    TRACE_FAIL("env_minimal()");
  v.sem[KW_generate] = generate;

  KernelState& k = kernel();
  k.env_text = {ENV_TEXT_0, ENV_TEXT_1};
  k.kom_text = {KOM_TEXT_0, KOM_TEXT_1};
  k.mes_text = {MES_TEXT_0, MES_TEXT_1};
  VOIR_CHAR("%s", "minimal environment without any file\n");
}
