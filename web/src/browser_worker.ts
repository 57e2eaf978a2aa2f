// A worker of a browser as the client sees it.
import type { Answer, Worker as Ends } from './protocol.js';

export function browserWorker(worker: Worker): Ends {
    return {
        post: (request) => worker.postMessage(request),
        onAnswer: (told) => void (worker.onmessage = (event: MessageEvent<Answer>) => told(event.data)),
        onEnd: (told) => void (worker.onerror = (event) => told(event.message)),
        terminate: () => worker.terminate(),
    };
}
