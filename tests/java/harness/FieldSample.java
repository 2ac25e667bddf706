package harness;

/** What the field operations work on; allocated without its constructor. */
public record FieldSample(int number, Object object) {}
