package harness;

/** Objects of every kind that {@link Tree} renders. */
public final class TreeSamples {
    private TreeSamples() {}

    enum Colour {
        RED,
        GREEN {
            @Override
            public String toString() {
                return "not the name";
            }
        }
    }

    record Inner(long wide, String text) {}

    record Outer(int number, Inner inner, byte[] bytes, int[] ints, Inner[] inners, Colour colour) {
        Outer {
            number = number + 0;
        }

        @Override
        public int number() {
            return -1;
        }
    }

    static final class Plain {
        private final int second = 2;
        final Boolean first = true;
        static final int NONE = 0;
    }

    public static Object[] all() {
        return new Object[] {
            new Outer(
                    3,
                    new Inner(4294967295L, "a\"\\\u3042\n\u0000"),
                    new byte[] {1, -2},
                    new int[] {13, 52},
                    new Inner[] {new Inner(0, null), null},
                    Colour.GREEN),
            new Plain(),
            new Object[0],
            new byte[0],
        };
    }
}
