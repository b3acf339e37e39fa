// The plainest relay on ws: pairs by group, forwards what goes to the friend. No limits, no
// passwords, no heartbeat.
"use strict";

const fs = require("fs");
const https = require("https");
const { WebSocketServer } = require("ws");

const [cert, key] = process.argv.slice(2);
const server = https.createServer({ cert: fs.readFileSync(cert), key: fs.readFileSync(key) });
const sockets = new WebSocketServer({ server, path: "/ws/chat", perMessageDeflate: false });
const groups = new Map();

function logIn(socket, message) {
    socket.name = message.from;
    const group = message.from.split(":")[0];
    const members = groups.get(group) || groups.set(group, new Set()).get(group);
    members.add(socket);
    socket.members = members;
    socket.on("close", () => {
        members.delete(socket);
        if (members.size === 0) {
            groups.delete(group);
        }
    });
    socket.send(JSON.stringify({ type: "CHAT", subType: "welcome" }));
}

sockets.on("connection", (socket) => {
    socket.on("error", () => {});
    socket.on("message", (data, isBinary) => {
        const message = JSON.parse(data);
        if (socket.members === undefined) {
            logIn(socket, message);
        } else if (message.to === "#" || message.to === "*") {
            for (const other of socket.members) {
                if (other !== socket) {
                    other.send(data, { binary: isBinary });
                }
            }
        }
    });
});

server.listen(0, "127.0.0.1", 4096, () => {
    console.log(`wss://127.0.0.1:${server.address().port}/`);
});
