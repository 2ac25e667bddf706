// Which messages are listed, by what was typed.

const unitNanoseconds = { ns: 1, us: 1e3, "µs": 1e3, ms: 1e6, s: 1e9 };

/** Whether a word is a part of the name of a message or its thread, or its id: asked once for each of them. */
function wordTest(word, session) {
    const answers = new Map();
    const threads = session.threads.map((thread) => (thread.name || String(thread.id)).toLowerCase().includes(word));
    return (i) => {
        const id = session.messages.id[i];
        if (!answers.has(id)) {
            answers.set(id, session.name(i).toLowerCase().includes(word) || session.idText(i) === word);
        }
        return answers.get(id) || threads[session.messages.thread[i]];
    };
}

/** Tests of a message, one for each thing that the text asks for. */
function testsOf(text, session) {
    const tests = [];
    let rest = text;
    const take = (pattern, test) => {
        rest = rest.replace(pattern, (...match) => {
            tests.push(test(match));
            return " ";
        });
    };
    take(/\b(slower|faster) than\s+(\d+(?:\.\d+)?)\s*(ns|us|µs|ms|s)\b/gi, ([, which, number, unit]) => {
        const limit = Number(number) * unitNanoseconds[unit.toLowerCase()];
        return which.toLowerCase() === "slower" ? (i) => session.latency[i] > limit : (i) => session.latency[i] < limit;
    });
    take(/\bhandle[ :=]\s*(\d+)\b/gi, ([, handle]) => (i) => session.messages.session[i] === Number(handle));
    take(/#(\d+)\b/g, ([, number]) => (i) => session.messages.number[i] === Number(number) ||
        session.messages.partner[i] === Number(number));
    take(/\b(command|answer|event|refused)s?\b(?![\w])/gi, ([, kind]) => (i) => session.kind(i) === kind.toLowerCase());
    take(/\bfailed\b/gi, () => (i) => session.failures.has(i));
    take(/\bunanswered\b/gi, () => (i) => session.unanswered.has(i));
    take(/\bthread[:=](\S+)/gi, ([, thread]) => (i) => session.threadName(i).toLowerCase() === thread.toLowerCase());
    for (const word of rest.toLowerCase().split(/[\s,]+/).filter(Boolean)) {
        tests.push(wordTest(word, session));
    }
    return tests;
}

/** The indexes of the messages that pass, in the order of the file. */
function filtered(session, text) {
    const tests = testsOf(text, session);
    const indexes = [];
    for (let i = 0; i < session.count; ++i) {
        if (tests.every((test) => test(i))) {
            indexes.push(i);
        }
    }
    return indexes;
}
