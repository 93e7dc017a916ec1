// zuPosixResourceLoader: the library's message loader, one per process.
//
// Texts are looked up, stopping at the first that has the id, in: the
// override loader, the client's catalogue (zuSetDLLHandle), the library's
// resource catalogue, the calling thread's secondary catalogues in the order
// registered, and the executable's own catalogue (<executable>.msg beside it).
//
// The resource catalogue is "Resources" + a language suffix + ".msg", found
// on first use next to the client's catalogue when one was set, else next to
// the library (its folder, then ../share/zuutility/ from there). Suffixes are
// tried in this order: the user locale's language_COUNTRY and language, the
// system locale's two, "En", "Intl".
//
//   zuSetDLLHandle(zuLoadResourceDll(nullptr, "/opt/app/share/AppTexts"));
//   zuString text;
//   zuPosixResourceLoader::Instance().LoadResource(16479, text);
//
// Settings are library-wide and meant for start-up; secondary catalogues
// belong to the thread that registers them.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuResourceLoader.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuPosixResourceLoader : public zuResourceLoader {
 public:
  // The singleton, created on first use.
  static zuPosixResourceLoader& Instance();

  // Returns 1 with `text` set when some catalogue has message `id`, else 0
  // with `text` unchanged. The first call loads the resource catalogue; when
  // none is found, `text` is emptied and 0 returned before the library is
  // initialised (zuUtilityInit), and zuExResourceFailure is thrown after.
  int LoadResource(unsigned short id, zuString& text) override;

  // The catalogue standing for the library itself; its folder is where the
  // resource catalogue is looked for when no client catalogue is set. By
  // default the folder of the library's binary.
  static void SetUtilityHandle(zuModule module);
  // With 0, the resource catalogue is neither loaded nor consulted.
  static void UseResourceDLL(int use);
  // Adds or removes (every entry equal to) a catalogue of the calling
  // thread, consulted after the resource catalogue. Throws zuExMemory.
  static void AddSecondaryHandle(zuModule module);
  static void RemoveSecondaryHandle(zuModule module);
  // A loader asked before every catalogue (null: none). Not owned.
  static void Override(zuResourceLoader* loader);
  static zuResourceLoader* Override();

 private:
  zuPosixResourceLoader() = default;
};

// Registers the client's catalogue: consulted right after the override
// loader, and the place next to which the resource catalogue is looked for.
ZU_EXPORT void zuSetDLLHandle(zuModule module);

// Loads the catalogue `baseName` + language suffix + ".msg", trying the
// suffixes in the order above, from the folder of `nextTo` and then
// ../share/zuutility/ from there; with a null `nextTo` the name is used as a
// path as it stands. A name loaded before returns the same handle without
// reading the file again. Returns null when no candidate can be read.
ZU_EXPORT zuModule zuLoadResourceDll(zuModule nextTo, const char* baseName);
// The same with a UTF-16 base name.
ZU_EXPORT zuModule zuLoadResourceDllW(zuModule nextTo, const char16_t* baseName);
