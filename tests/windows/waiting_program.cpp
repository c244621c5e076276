// Makes the file that its argument names, then runs until its standard input ends: stands for a
// program that must not be disturbed.
#include <cstdio>

int main(int count, char** words) {
  if (count != 2) {
    return 2;
  }
  std::FILE* sign = std::fopen(words[1], "wb");
  if (sign == nullptr) {
    return 1;
  }
  std::fclose(sign);
  while (std::getchar() != EOF) {
  }
}
