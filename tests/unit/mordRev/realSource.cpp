void PrepareSystem() {}
