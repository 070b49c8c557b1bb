# Pretty printers of the library's types for gdb: sets of modules by name, switches by name, the
# boolean and integer ones with their value. gdb loads them together with a library that is installed
# below /usr; elsewhere "source zeltools.py" does.
import gdb
import gdb.printing


def items(container):
    """The elements of a QVector or the characters of a QString, with Qt 5 or Qt 6."""
    d = container['d']
    element = container.type.strip_typedefs().template_argument(0) \
        if '<' in container.type.strip_typedefs().name else gdb.lookup_type('unsigned short')
    if d.type.strip_typedefs().code == gdb.TYPE_CODE_PTR:  # Qt 5: a header in front of the elements
        begin = (d.cast(gdb.lookup_type('char').pointer()) + int(d['offset']))
    else:
        begin = d['ptr']
    begin = begin.cast(element.pointer())
    return [begin[i] for i in range(int(d['size']))]


def text(string):
    return ''.join(chr(int(unit)) for unit in items(string))


def module_names():
    address = gdb.parse_and_eval("&'(anonymous namespace)::registry()::modules'")
    try:
        container = gdb.lookup_type('QVector<LogModule*>')
    except gdb.error:
        container = gdb.lookup_type('QList<LogModule*>')
    modules = address.cast(container.pointer()).dereference()
    return {int(module['m_id']): text(module['m_name']) for module in items(modules)}


class LogModule:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return text(self.value['m_name'])


class LogModules:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        bits = int(self.value['m_bits'])
        return ' | '.join(name for id, name in sorted(module_names().items())
                          if bits >> id & 1) or 'no modules'


class VersionNumber:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        vector = self.value['m_identifiers']['_M_impl']
        first = vector['_M_start']
        return '.'.join(str(int(first[i])) for i in range(int(vector['_M_finish'] - first)))


class EnvVar:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        name = text(self.value['m_name'])
        if str(self.value.dynamic_type).endswith('String'):
            return name
        return '%s (%d)' % (name, int(self.value['m_number']['_M_i']))


printers = gdb.printing.RegexpCollectionPrettyPrinter('zeltools')
printers.add_printer('LogModule', '^LogModule$', LogModule)
printers.add_printer('LogModules', '^LogModules$', LogModules)
printers.add_printer('VersionNumber', '^VersionNumber$', VersionNumber)
printers.add_printer('EnvVar', '^zeltools::envvar::EnvVar(Bool|Int|String)?$', EnvVar)
gdb.printing.register_pretty_printer(gdb.current_objfile(), printers, replace=True)
