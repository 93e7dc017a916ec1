// zuexample: a tour of the library's foundation on built-in data.
//
// Prints what the string, formatting, exception, thread and atom classes do
// with a handful of texts, so that a new user sees the library at work.
#include <zu/zuutility.h>

#include <cstdio>

namespace {

void print(const char* label, const zuString& value) {
  std::printf("  %-34s %s\n", label, static_cast<const char*>(value));
}

void showStrings() {
  std::printf("Strings\n");
  zuString greeting(
      "Gr\xC3\xBC\xC3\x9F"
      "e, \xE4\xB8\x96\xE7\x95\x8C");
  zuString copy = greeting;
  print("text", greeting);
  std::printf("  %-34s %u bytes, %u code points\n", "length", greeting.Length(),
              greeting.UniLength(0, greeting.Length()));
  std::printf("  %-34s %s\n", "copy shares the block", copy.SharesImpl(greeting) ? "yes" : "no");
  copy += "!";
  std::printf("  %-34s %s\n", "after an edit it shares", copy.SharesImpl(greeting) ? "yes" : "no");
  zuString upper(greeting);
  upper.ToUpper(0, upper.Length());
  print("ToUpper (ASCII only)", upper);
  zuString markup("Fish & <chips> \"to go\"");
  print("toXML, attribute in quotes",
        markup.toXML(zuXMLAttributeDQuote, zuString::EmptyString(), 0, 0, zuString::EmptyString()));
  zuString number;
  number.Number(3.14159, 2, 0);
  print("Number(3.14159, 2 decimals)", number);
  zuString words("  alpha beta\\ gamma  ");
  zuString token;
  while (words.ParseToken(token) && !token.IsEmpty()) print("ParseToken", token);
}

void showFormatting() {
  std::printf("Message formatting\n");
  zuFormat sequential("%s has %d code points and %x in hex");
  sequential << zuString("caf\xC3\xA9") << 4 << 255;
  print("zuFormat", sequential.GetString());
  zuFormatPos numbered("%2 before %1");
  numbered << "first"
           << "second";
  print("zuFormatPos (reordered)", numbered.GetString());
}

void showExceptions() {
  std::printf("Exceptions\n");
  try {
    ZuExThrow(zuFormat("Value %d is out of range %s", 42) << "[0, 10]");
  } catch (const zuExFull& error) {
    std::printf("  %-34s %u item(s), first id %u\n", "caught zuExFull", error.Count(),
                static_cast<unsigned>(error.FirstResId()));
    print("item text", error[0].Text());
  }
  try {
    zuString text;
    text =
        "\xFF\xFE"
        "A";
  } catch (const zuExFull& error) {
    std::printf("  %-34s id %u\n", "UTF-16 text given as bytes",
                static_cast<unsigned>(error.FirstResId()));
  }
}

struct CountJob {
  const zuString* text;
  unsigned int spaces = 0;
  bool atomsAgree = false;
};

// Runs on a library thread: counts the spaces of a string it shares with the
// main thread, and interns a word in its own atom table.
unsigned int countSpaces(void* argument) {
  auto* job = static_cast<CountJob*>(argument);
  zuString mine = *job->text;
  for (unsigned int i = 0; i < mine.Length(); ++i) {
    if (mine[i] == ' ') ++job->spaces;
  }
  job->atomsAgree = zuAtom_str("spaces") == zuAtom_str("spaces");
  return 0;
}

void showThreadsAndAtoms() {
  std::printf("Threads and atoms\n");
  zuString sentence("four threads count the spaces of this sentence");
  CountJob jobs[4];
  zuThread* workers[4];
  for (int i = 0; i < 4; ++i) {
    jobs[i].text = &sentence;
    workers[i] = zuThread::NewThread(0, zuThread::eNormal, countSpaces, &jobs[i]);
  }
  for (int i = 0; i < 4; ++i) {
    workers[i]->WaitForThreadToExit(-1);
    std::printf("  %-34s %u spaces, its atoms agree: %s\n", "worker", jobs[i].spaces,
                jobs[i].atomsAgree ? "yes" : "no");
    delete workers[i];
  }
  zuAtom_str first("margin");
  zuAtom_str second("margin");
  std::printf("  %-34s %s\n", "same text, same atom", first == second ? "yes" : "no");
}

}  // namespace

int main() {
  showStrings();
  showFormatting();
  showExceptions();
  showThreadsAndAtoms();
  return 0;
}
