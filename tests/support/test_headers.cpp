// An empty program, for the headers that all suites share precompiled.
int main() {}
