// The whole core and the whole simulation with nothing beside them but the standard library. That this
// program links is the proof that they need nothing else.
int main() {}
