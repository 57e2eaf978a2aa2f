// The worker of Node.
import { parentPort } from 'node:worker_threads';
import createCorvane from '../lib/corvane.mjs';
import { serve } from './serve.js';

const take = serve(createCorvane, (answer) => parentPort!.postMessage(answer));
parentPort!.on('message', (request) => void take(request));
