// Seed of the locale table: root, en, en_US and ar, written by hand until
// the generator writes the full table here.
#include "zu/locale/internal/RnDataTable.h"

namespace zu::internal {

#define N nullptr
const RnDataRecord kRnDataRecords[] = {
    {{"ar", "\u0635", "\u0645", "\u00a4", "XXX", N,
      "Z h:MM:SS A", "h:MM:SS A", "h:MM:SS A", "h:MM A",
      "EEEE, D MMMM, YYYY", "D MMMM, YYYY", "DD/MM/YYYY", "D/M/YYYY", N,
      "\u0627\u0644\u0623\u062d\u062f", "\u0627\u0644\u0627\u062b\u0646\u064a\u0646",
      "\u0627\u0644\u062b\u0644\u0627\u062b\u0627\u0621", "\u0627\u0644\u0623\u0631\u0628\u0639\u0627\u0621",
      "\u0627\u0644\u062e\u0645\u064a\u0633", "\u0627\u0644\u062c\u0645\u0639\u0629", "\u0627\u0644\u0633\u0628\u062a",
      "\u0627\u0644\u0623\u062d\u062f", "\u0627\u0644\u0627\u062b\u0646\u064a\u0646",
      "\u0627\u0644\u062b\u0644\u0627\u062b\u0627\u0621", "\u0627\u0644\u0623\u0631\u0628\u0639\u0627\u0621",
      "\u0627\u0644\u062e\u0645\u064a\u0633", "\u0627\u0644\u062c\u0645\u0639\u0629", "\u0627\u0644\u0633\u0628\u062a",
      "\u0642.\u0645", "\u0645", "GanjkHmsSEDFwWxhKzZ",
      "\u064a\u0646\u0627\u064a\u0631", "\u0641\u0628\u0631\u0627\u064a\u0631", "\u0645\u0627\u0631\u0633",
      "\u0623\u0628\u0631\u064a\u0644", "\u0645\u0627\u064a\u0648", "\u064a\u0648\u0646\u064a\u0648",
      "\u064a\u0648\u0644\u064a\u0648", "\u0623\u063a\u0633\u0637\u0633", "\u0633\u0628\u062a\u0645\u0628\u0631",
      "\u0623\u0643\u062a\u0648\u0628\u0631", "\u0646\u0648\u0641\u0645\u0628\u0631", "\u062f\u064a\u0633\u0645\u0628\u0631",
      "\u064a\u0646\u0627\u064a\u0631", "\u0641\u0628\u0631\u0627\u064a\u0631", "\u0645\u0627\u0631\u0633",
      "\u0623\u0628\u0631\u064a\u0644", "\u0645\u0627\u064a\u0648", "\u064a\u0648\u0646\u064a\u0648",
      "\u064a\u0648\u0644\u064a\u0648", "\u0623\u063a\u0633\u0637\u0633", "\u0633\u0628\u062a\u0645\u0628\u0631",
      "\u0623\u0643\u062a\u0648\u0628\u0631", "\u0646\u0648\u0641\u0645\u0628\u0631", "\u062f\u064a\u0633\u0645\u0628\u0631",
      "\u066b", "\u066c", "\u066a", N, "\u0660", "z,zz9.zzz", "$ z,zz9.99s", N,
      "Noto Naskh Arabic\0Noto Sans Arabic\0DejaVu Sans\0"}},
    {{"en", N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N,
      N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N,
      N, N, N, N, N, N, N, N, N, N, N, N}},
    {{"en_US", N, N, "$", "USD", ".", N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N,
      N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N,
      N, N, N, N, N, N, N, N, N, N, N, N, "$z,zz9.99|($z,zz9.99)", N, N}},
    {{"root", "AM", "PM", "$", "USD", ".",
      "h:MM:SS A Z", "h:MM:SS A Z", "h:MM:SS A", "h:MM A",
      "EEEE, MMMM D, YYYY", "MMMM D, YYYY", "MMM D, YYYY", "M/D/YY", "date{} time{}",
      "Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat",
      "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday",
      "BC", "AD", "GyMdkHmsSEDFwWahKzZ",
      "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec",
      "January", "February", "March", "April", "May", "June", "July", "August",
      "September", "October", "November", "December",
      ".", ",", "%", "-", "0", "z,zz9.zzz", "s$ z,zz9.99", "z,zz9%",
      "Noto Sans\0DejaVu Sans\0Liberation Sans\0"}},
};
#undef N
const unsigned int kRnDataRecordCount = sizeof(kRnDataRecords) / sizeof(kRnDataRecords[0]);

}  // namespace zu::internal
