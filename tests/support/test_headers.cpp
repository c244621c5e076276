// A program of nothing but the headers that the suites share.
int main() {}
