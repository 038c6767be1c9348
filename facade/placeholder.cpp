namespace { int placeholder; }
