package harness;

/** A class for the tests of the field operations; allocated without its constructor. */
public record FieldSample(int number, Object object) {}
