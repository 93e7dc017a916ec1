// The zuString members that read message texts from the catalogue.
#include "zu/core/zuPosixResourceLoader.h"
#include "zu/core/zuString.h"
#include "zu/core/zuThreadSafeString.h"

zuString::zuString(unsigned short messageId) : zuString() {
  LoadResource(messageId);
}

int zuString::LoadResource(unsigned short id) {
  return zuPosixResourceLoader::Instance().LoadResource(id, *this);
}

int zuString::MatchesResource(unsigned short id) const {
  zuString message;
  return message.LoadResource(id) && CompareNoCase(message) == 0 ? 1 : 0;
}

zuThreadSafeString::zuThreadSafeString(unsigned short messageId) {
  SetScope(eGlobal);
  LoadResource(messageId);
}
