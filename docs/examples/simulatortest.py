import socket
import zelsim

script = zelsim.Script.parse('zelsim script 1\nwhen "status?" answer "ready"\n')
with zelsim.Simulator(script) as simulator:
    address = simulator.address.replace("server", "client")
    with zelsim.LinkRecorder(address, "link.zelsim") as recorder:
        with socket.create_connection(("127.0.0.1", recorder.port)) as machine:
            machine.sendall(zelsim.frame(b"status?"))
            assert machine.recv(100) == zelsim.frame(b"ready")
print(zelsim.Recording.load("link.zelsim").messages("simulator"))  # [b'ready']
