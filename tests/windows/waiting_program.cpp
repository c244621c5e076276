// Runs until its standard input ends: stands for a program that must not be disturbed.
#include <cstdio>

int main() {
  std::puts("running");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
}
